// A user's program: measures a square, and catches every exception class by its own type and by
// each of its bases. All throws happen inside the libraries, so a type that the two sides do not
// share, or a table that is not exported, shows here.
#include <cntr/cntr.h>

#include <qc/core/fit_error.h>
#include <qc/core/thread.h>

#include <exception>
#include <iostream>
#include <string>
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

template <class E, class... Bases, class Raise>
void expectCaught(std::string const& name, Raise raise)
{
    expect(arrivesAs<E>(raise), name + " caught by its own type");
    bool const byBases[] = {arrivesAs<Bases>(raise)..., arrivesAs<qcException>(raise),
                            arrivesAs<qcPersistent>(raise), arrivesAs<qcExceptionBase>(raise),
                            arrivesAs<std::exception>(raise)};
    for (bool const byBase : byBases)
        expect(byBase, name + " caught by each base");
}

/// The library's own implementation of suicideAndRethrow throws the copy.
template <class E, class... Bases, class... Arguments>
void expectCaughtWhenRethrown(std::string const& name, Arguments... arguments)
{
    expectCaught<E, Bases...>(name, [=] { (new E(arguments...))->suicideAndRethrow(); });
}

void libraryExceptions()
{
    using D = qcContourDefs;
    expectCaughtWhenRethrown<D::EmptyContour, D::Errors, qcExceptionWithString>("EmptyContour");
    expectCaughtWhenRethrown<D::EmptyRegionSet, D::Errors, qcExceptionWithString>("EmptyRegionSet");
    expectCaughtWhenRethrown<D::BadParams, D::Errors, qcExceptionWithString>("BadParams");
    expectCaughtWhenRethrown<D::RegionCannotBeSetOpen, D::Errors, qcExceptionWithString>(
        "RegionCannotBeSetOpen");
    expectCaught<D::EmptyContour, D::Errors, qcExceptionWithString>(
        "EmptyContour of a query", [] { qcContour().meanPosition(); });
    try {
        qcContour().cachedVectorSize(-1);
        expect(false, "a negative bound is refused");
    } catch (std::exception const& error) {
        expect(!std::string(error.what()).empty(), "what() has a text");
    }
}

void foundationExceptions()
{
    expectCaughtWhenRethrown<qcBadPointer>("qcBadPointer");
    expectCaught<qcBadPointer>("qcBadPointer of a null handle",
                               [] { *qcPtrHandle_const<qcRepBase>(); });
    expectCaughtWhenRethrown<qcMathError::Singular, qcMathError::Errors>("Singular");
    expectCaught<qcMathError::Singular, qcMathError::Errors>(
        "Singular of a matrix", [] { qcMatrix<2>(1, 2, 2, 4).inverse(); });
    expectCaughtWhenRethrown<qcPel::BadWindow, qcPel::Errors>("BadWindow");

    expectCaughtWhenRethrown<qcThreadID::Ended>("Ended");

    using A = qcArchive;
    expectCaughtWhenRethrown<A::UnknownVersion, A::Errors>("UnknownVersion", __FILE__, __LINE__);
    expectCaughtWhenRethrown<A::EndOfData, A::Errors>("EndOfData", "text");
    expectCaughtWhenRethrown<A::UnknownClass, A::Errors>("UnknownClass", "text");
    expectCaughtWhenRethrown<A::BadReference, A::Errors>("BadReference", "text");
    expectCaughtWhenRethrown<A::ValueOutOfRange, A::Errors>("ValueOutOfRange", "text");
    expectCaughtWhenRethrown<A::BadCount, A::Errors>("BadCount", "text");
    expectCaughtWhenRethrown<A::NestingTooDeep, A::Errors>("NestingTooDeep", "text");
    expectCaughtWhenRethrown<A::AlreadyStreamed, A::Errors>("AlreadyStreamed", "text");
    expectCaughtWhenRethrown<A::WrongDirection, A::Errors>("WrongDirection", "text");
    expectCaughtWhenRethrown<A::Unusable, A::Errors>("Unusable", "text");
    expectCaughtWhenRethrown<A::FileError, A::Errors>("FileError", "text");

    using F = qcFitError;
    expectCaughtWhenRethrown<F::BadParams, F::Errors, qcExceptionWithString>("fit: BadParams");
    expectCaughtWhenRethrown<F::NotFinite, F::Errors, qcExceptionWithString>("fit: NotFinite");
    expectCaughtWhenRethrown<F::TooFewPoints, F::Errors, qcExceptionWithString>("TooFewPoints");
    expectCaughtWhenRethrown<F::Degenerate, F::Errors, qcExceptionWithString>("Degenerate");
    expectCaughtWhenRethrown<F::NotAnEllipse, F::Errors, qcExceptionWithString>("NotAnEllipse");
    expectCaughtWhenRethrown<F::ResidualTooLarge, F::Errors, qcExceptionWithString>(
        "ResidualTooLarge");
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
    libraryExceptions();
    foundationExceptions();
    if (failures == 0)
        std::cout << "consumer: a square measured, every exception caught by type and bases\n";
    return failures == 0 ? 0 : 1;
}
