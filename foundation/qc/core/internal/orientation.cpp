// The side of a line: a quick answer where rounding cannot matter, else exact sums.
#include <qc/core/internal/orientation.h>

#include <cmath>
#include <initializer_list>

namespace {

constexpr double kHalfUlp = 0x1p-53;
// Three roundings (a difference, a product, the last difference) bound the error of the quick
// determinant by this share of the sum of its two products; the second term covers their squares.
constexpr double kFilter = (3.0 + 16.0 * kHalfUlp) * kHalfUlp;

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

}  // namespace

int qnInternal::orientation(qcVector<2> const& a, qcVector<2> const& b,
                            qcVector<2> const& c) noexcept
{
    double const left = (b.x() - a.x()) * (c.y() - a.y());
    double const right = (b.y() - a.y()) * (c.x() - a.x());
    double const determinant = left - right;
    if (std::fabs(determinant) > kFilter * (std::fabs(left) + std::fabs(right)))
        return signOf(determinant);
    ExactSum exact;
    addProduct(exact, sum(b.x(), -a.x()), sum(c.y(), -a.y()), 1.0);
    addProduct(exact, sum(b.y(), -a.y()), sum(c.x(), -a.x()), -1.0);
    return exact.sign();
}
