// The one instantiation of the data-carrying classes, for edge points.
#include "ch_core/cntrtmpl_regionst.h"

template class qcContourT<qcEdgelet>;
template class qcRegionT<qcEdgelet>;
template class qcRegionSetT<qcEdgelet>;
