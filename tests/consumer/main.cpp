// A user's program: measures a square, and catches every exception class by its own type and by
// each of its bases. All throws happen inside the libraries, so a type that the two sides do not
// share, or a table that is not exported, shows here.
#include <cntr/cntr.h>

#include <qc/core/fit_error.h>
#include <qc/core/thread.h>

#include <exception>
#include <iostream>
#include <string>
#include <typeinfo>
#include <vector>

namespace {

int failures = 0;

void expect(bool holds, std::string const& claim)
{
    if (!holds) {
        std::cerr << "consumer: not so: " << claim << '\n';
        ++failures;
    }
}

/// Whether `raise`, which throws inside a library, ends in the handler of Caught.
template <class Caught, class Raise>
bool arrivesAs(Raise raise)
{
    try {
        raise();
    } catch (Caught const&) {
        return true;
    } catch (...) {
    }
    return false;
}

/// The library's own implementation of suicideAndRethrow throws the copy.
template <class E, class... Bases, class... Arguments>
void expectCaught(Arguments... arguments)
{
    auto const raise = [=] { (new E(arguments...))->suicideAndRethrow(); };
    bool const caught[] = {arrivesAs<E>(raise),
                           arrivesAs<Bases>(raise)...,
                           arrivesAs<qcException>(raise),
                           arrivesAs<qcPersistent>(raise),
                           arrivesAs<qcExceptionBase>(raise),
                           arrivesAs<std::exception>(raise)};
    for (bool const one : caught)
        expect(one, std::string(typeid(E).name()) + " caught by its own type and each base");
}

template <class Family, class... Exceptions, class... Arguments>
void expectEachCaught(Arguments... arguments)
{
    (expectCaught<Exceptions, Family>(arguments...), ...);
}

void exceptions()
{
    using D = qcContourDefs;
    using F = qcFitError;
    using A = qcArchive;
    using Text = qcExceptionWithString;
    expectEachCaught<D::Errors, D::EmptyContour, D::EmptyRegionSet, D::BadParams,
                     D::RegionCannotBeSetOpen>();
    expectEachCaught<F::Errors, F::BadParams, F::NotFinite, F::TooFewPoints, F::Degenerate,
                     F::NotAnEllipse, F::ResidualTooLarge>();
    expectEachCaught<Text, D::EmptyContour, D::BadParams, F::BadParams, F::NotAnEllipse>();
    expectEachCaught<A::Errors, A::EndOfData, A::UnknownClass, A::BadReference, A::ValueOutOfRange,
                     A::BadCount, A::NestingTooDeep, A::AlreadyStreamed, A::WrongDirection,
                     A::Unusable, A::FileError>("text");
    expectCaught<A::UnknownVersion, A::Errors>(__FILE__, __LINE__);
    expectCaught<qcMathError::Singular, qcMathError::Errors>();
    expectCaught<qcPel::BadWindow, qcPel::Errors>();
    expectCaught<qcBadPointer>();
    expectCaught<qcThreadID::Ended>();
    expect(arrivesAs<D::EmptyContour>([] { qcContour().meanPosition(); }), "an empty contour");
    expect(arrivesAs<qcBadPointer>([] { *qcPtrHandle_const<qcRepBase>(); }), "a null handle");
    expect(!arrivesAs<qcPel::Errors>([] { qcMatrix<2>(1, 2, 2, 4).inverse(); }), "another family");
}

/// A user's record of objects, empty when made from nothing.
struct Part {
    qcContour outline;
    qcRegion region;
    qcRegionSet set;
    qc_InertiaData moments;
};

}  // namespace

int main()
{
    Part const part{};
    expect(part.outline == qcContour() && part.region == qcRegion() && part.set == qcRegionSet() &&
               part.moments.area() == 0.0,
           "empty braces make empty objects");
    std::vector<qcVector<2>> const square{{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    expect(qf_Area(square) == 1.0, "the unit square has area 1");
    expect(qcContour(square).length() == 4.0, "its outline has length 4");
    exceptions();
    if (failures == 0)
        std::cout << "consumer: a square measured, every exception caught by type and bases\n";
    return failures == 0 ? 0 : 1;
}
