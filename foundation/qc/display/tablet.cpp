/// \file
/// The drawing surface and the one that records.
#include <qc/display/tablet.h>

qcUITablet::~qcUITablet() = default;

qcRecordingTablet::~qcRecordingTablet() = default;

void qcRecordingTablet::drawLineSeg(qcPair<double> const& from, qcPair<double> const& to,
                                    qcColor const& color, Layers layer)
{
    segments_.push_back({from, to, color, layer});
}
