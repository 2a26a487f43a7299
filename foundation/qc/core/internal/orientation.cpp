// The side of a line: errors of rounding are added once, and where that is not enough exactly.
#include <qc/core/internal/orientation.h>

#include <initializer_list>

namespace {

int signOf(double value)
{
    return (value > 0.0) - (value < 0.0);
}

/// A double and the rounding error that belongs to it: their sum is exact.
struct Exact {
    double value;
    double error;
};

Exact sum(double a, double b)
{
    double const value = a + b;
    double const bShare = value - a;
    double const aShare = value - bShare;
    return {value, (a - aShare) + (b - bShare)};
}

Exact product(double a, double b)
{
    double const value = a * b;
    return {value, std::fma(a, b, -value)};
}

/// A sum of doubles without any rounding: parts of growing size that do not overlap.
class ExactSum {
public:
    void add(double term)
    {
        int kept = 0;
        for (int i = 0; i < count_; ++i) {
            Exact const step = sum(term, parts_[i]);
            term = step.value;
            if (step.error != 0.0)
                parts_[kept++] = step.error;
        }
        if (term != 0.0)
            parts_[kept++] = term;
        count_ = kept;
    }

    /// The largest part outweighs all others together.
    int sign() const { return count_ == 0 ? 0 : signOf(parts_[count_ - 1]); }

private:
    static constexpr int kTerms = 16;  // two products of two-part differences, 8 terms each
    double parts_[kTerms + 1] = {};
    int count_ = 0;
};

void addProduct(ExactSum& total, Exact const& a, Exact const& b, double factor)
{
    for (double const left : {a.error, a.value}) {
        for (double const right : {b.error, b.value}) {
            Exact const part = product(left * factor, right);
            total.add(part.error);
            total.add(part.value);
        }
    }
}

/// The sign of a * b - c * d, whose quick value is too small to be sure of; exact.
int signOfDifference(Exact const& a, Exact const& b, Exact const& c, Exact const& d)
{
    // Points along an axis. What an error belongs to is not 0.
    if ((a.value == 0.0 || b.value == 0.0) && (c.value == 0.0 || d.value == 0.0))
        return 0;
    Exact const left = product(a.value, b.value);
    Exact const right = product(c.value, d.value);
    double const size = std::fabs(left.value) + std::fabs(right.value);
    if (size > 0x1p-900 && size < 0x1p+1000) {         // else errors may leave the range of double
        double const main = left.value - right.value;  // exact: they are nearly equal
        double const rest = (left.error - right.error) + ((a.value * b.error + a.error * b.value) -
                                                          (c.value * d.error + c.error * d.value));
        bool const exactFactors =
            a.error == 0.0 && b.error == 0.0 && c.error == 0.0 && d.error == 0.0;
        // Products in the order of their values have values in that order, or the same value.
        if (exactFactors)
            return main != 0.0 ? signOf(main) : signOf(rest);
        // In units of 2^-106 * size: each of the at most four roundings of `rest`, whose terms add
        // up to three units of 2^-53, makes 3, and the products of two errors that are left out 1.
        if (std::fabs(main + rest) > 16 * 0x1p-106 * size)
            return signOf(main + rest);
    }
    ExactSum exact;
    addProduct(exact, a, b, 1.0);
    addProduct(exact, c, d, -1.0);
    return exact.sign();
}

}  // namespace

int qnInternal::exactOrientation(qcVector<2> const& a, qcVector<2> const& b,
                                 qcVector<2> const& c) noexcept
{
    return signOfDifference(sum(b.x(), -a.x()), sum(c.y(), -a.y()), sum(b.y(), -a.y()),
                            sum(c.x(), -a.x()));
}
