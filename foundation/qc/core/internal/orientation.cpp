// The side of a line by exact sums.
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

}  // namespace

int qnInternal::exactOrientation(qcVector<2> const& a, qcVector<2> const& b,
                                 qcVector<2> const& c) noexcept
{
    ExactSum exact;
    addProduct(exact, sum(b.x(), -a.x()), sum(c.y(), -a.y()), 1.0);
    addProduct(exact, sum(b.y(), -a.y()), sum(c.x(), -a.x()), -1.0);
    return exact.sign();
}
