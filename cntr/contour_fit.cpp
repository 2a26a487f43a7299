// The ellipse fitted to the points of a contour.
#include <cntr/contour.h>
#include <cntr/ellipse_fit.h>

void qcContour::fitEllipse(qcEllipse& ellipse, double& residual) const
{
    checkEmptyContour();
    if (!fitEllipse_) {
        Fit fit;
        qf_FitEllipse(points_, fit.ellipse, fit.residual);
        fitEllipse_ = fit;
    }
    ellipse = fitEllipse_->ellipse;
    residual = fitEllipse_->residual;
}
