// What happens when the library is loaded, in this order: the factories of all classes that archives
// can hold, with the slot of the threads' random sources between the plain and the data-carrying
// ones. All in one file, since only inside one file the order is certain.
#include <cntr/cntrtmpl.h>
#include <cntr/contour.h>
#include <cntr/contour_defs.h>
#include <cntr/region.h>
#include <cntr/regionst.h>

#include "cntr/internal/thread_random.h"

qc_Instantiator qcContourDefs::EmptyContour::sExemplar(typeid(EmptyContour), EmptyContour::make);
qc_Instantiator qcContourDefs::EmptyRegionSet::sExemplar(typeid(EmptyRegionSet),
                                                         EmptyRegionSet::make);
qc_Instantiator qcContourDefs::BadParams::sExemplar(typeid(BadParams), BadParams::make);
qc_Instantiator qcContourDefs::RegionCannotBeSetOpen::sExemplar(typeid(RegionCannotBeSetOpen),
                                                                RegionCannotBeSetOpen::make);
qc_Instantiator qcContour::sExemplar(typeid(qcContour), qcContour::make);
qc_Instantiator qcRegion::sExemplar(typeid(qcRegion), qcRegion::make);
qc_Instantiator qcRegionSet::sExemplar(typeid(qcRegionSet), qcRegionSet::make);

namespace {

[[maybe_unused]] qc_ThreadLocal& slotAtStart = qnInternal::randomSlot();

}  // namespace

template <>
qc_Instantiator qcContourT<qcEdgelet>::sExemplar(typeid(qcContourT<qcEdgelet>),
                                                 qcContourT<qcEdgelet>::make);
template <>
qc_Instantiator qcRegionT<qcEdgelet>::sExemplar(typeid(qcRegionT<qcEdgelet>),
                                                qcRegionT<qcEdgelet>::make);
template <>
qc_Instantiator qcRegionSetT<qcEdgelet>::sExemplar(typeid(qcRegionSetT<qcEdgelet>),
                                                   qcRegionSetT<qcEdgelet>::make);
