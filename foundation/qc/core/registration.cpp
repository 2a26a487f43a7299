// Factories of all classes of the foundation that archives may hold by pointer. They stand in one
// file because the order of initialisation is certain only inside one; it is the order below.
#include <qc/core/archive.h>
#include <qc/core/exception.h>
#include <qc/core/fit_error.h>
#include <qc/core/line.h>
#include <qc/core/shapes.h>
#include <qc/core/xform_base.h>

#include <typeinfo>

namespace {

template <class T>
qcPersistent* make()
{
    return new T;
}

qc_Instantiator const badPointer(typeid(qcBadPointer), make<qcBadPointer>);
qc_Instantiator const singular(typeid(qcMathError::Singular), make<qcMathError::Singular>);
qc_Instantiator const badWindow(typeid(qcPel::BadWindow), make<qcPel::BadWindow>);

qc_Instantiator const badParams(typeid(qcFitError::BadParams), make<qcFitError::BadParams>);
qc_Instantiator const notFinite(typeid(qcFitError::NotFinite), make<qcFitError::NotFinite>);
qc_Instantiator const tooFewPoints(typeid(qcFitError::TooFewPoints),
                                   make<qcFitError::TooFewPoints>);
qc_Instantiator const degenerate(typeid(qcFitError::Degenerate), make<qcFitError::Degenerate>);
qc_Instantiator const notAnEllipse(typeid(qcFitError::NotAnEllipse),
                                   make<qcFitError::NotAnEllipse>);
qc_Instantiator const residualTooLarge(typeid(qcFitError::ResidualTooLarge),
                                       make<qcFitError::ResidualTooLarge>);

qc_Instantiator const line(typeid(qcLine), make<qcLine>);
qc_Instantiator const lineSeg(typeid(qcLineSeg), make<qcLineSeg>);
qc_Instantiator const rect(typeid(qcRect), make<qcRect>);
qc_Instantiator const circle(typeid(qcCircle), make<qcCircle>);
qc_Instantiator const xformLinear(typeid(qc2XformLinear), make<qc2XformLinear>);
qc_Instantiator const rigid(typeid(qc2Rigid), make<qc2Rigid>);

}  // namespace
