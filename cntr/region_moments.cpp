// Area, centre of mass and second moments of a region, of its outline or without its holes.
#include <cntr/moments.h>
#include <cntr/region.h>

double qcRegion::area(bool considerHoles) const
{
    checkEmptyContour();
    if (!considerHoles) {
        if (!areaOfOutline_)
            areaOfOutline_ = qf_Area(points());
        return *areaOfOutline_;
    }
    if (!areaWithHoles_) {
        double area = this->area(false);
        for (auto const& hole : holes_)
            area -= hole->area(false);
        areaWithHoles_ = area;
    }
    return *areaWithHoles_;
}

qcVector<2> qcRegion::centerOfMass(bool considerHoles)
{
    return massCenter(considerHoles);
}

qcVector<2> qcRegion::massCenter(bool considerHoles) const
{
    checkEmptyContour();
    if (!considerHoles || holes_.empty()) {
        if (!centerOfOutline_)
            centerOfOutline_ = qf_CenterOfMass(points());
        return *centerOfOutline_;
    }
    if (!centerWithHoles_) {
        double area = this->area(false);
        qcVector<2> sum = massCenter(false) * area;
        for (auto const& hole : holes_) {
            double const holeArea = hole->area(false);
            sum -= hole->massCenter(false) * holeArea;
            area -= holeArea;
        }
        centerWithHoles_ = sum * (1 / area);
    }
    return *centerWithHoles_;
}

qcMatrix<2> qcRegion::inertiaMatrix(bool considerHoles)
{
    return secondMoments(considerHoles);
}

qcMatrix<2> qcRegion::secondMoments(bool considerHoles) const
{
    checkEmptyContour();
    if (considerHoles && !holes_.empty())
        throw qcContourDefs::BadParams(L"inertiaMatrix(considerHoles) is not implemented");
    if (!inertiaOfOutline_)
        inertiaOfOutline_ = qf_InertiaDataPolygon(points()).inertiaMatrix();
    return *inertiaOfOutline_;
}
