/// @file
/// The whole public face of the contour library, the foundation's vocabulary included.
#pragma once

#include <cntr/cntrtmpl.h>
#include <cntr/config.h>
#include <cntr/contour.h>
#include <cntr/contour_defs.h>
#include <cntr/ellipse_fit.h>
#include <cntr/moments.h>
#include <cntr/region.h>
#include <cntr/regionst.h>

#include <qc/core/angle.h>
#include <qc/core/archive.h>
#include <qc/core/circle_fit.h>
#include <qc/core/compare.h>
#include <qc/core/convex_hull.h>
#include <qc/core/ellipse_fit.h>
#include <qc/core/exception.h>
#include <qc/core/fit_error.h>
#include <qc/core/handle.h>
#include <qc/core/line.h>
#include <qc/core/matrix.h>
#include <qc/core/persistent.h>
#include <qc/core/random.h>
#include <qc/core/shapes.h>
#include <qc/core/thread.h>
#include <qc/core/vector.h>
#include <qc/core/xform_base.h>
#include <qc/display/tablet.h>
#include <qc/features/edgelet.h>
