#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace zavra::simulator
{

/// Appends a number as JSON with so many significant digits; null for what is none.
void append_json(std::string& text, double number, int digits);

/// Curves over time for a picture: memory and file stay small however long they get, and no extreme is lost. Rows fall
/// into buckets of the same number of rows; a bucket keeps of each column the least and the greatest value, in the
/// order in which they came. When there are too many buckets, two become one.
class Thinned_Curves
{
public:
    /// @param most_buckets  an even number
    Thinned_Curves(std::size_t columns, std::size_t most_buckets) : columns_(columns), most_buckets_(most_buckets) {}

    /// Numbers that are NaN leave a gap where there is no other in their bucket.
    void add(double time, std::span<const double> row);

    /// Two to each bucket of more than one row.
    std::vector<double> times() const;

    /// Values at the times. Empty when all of them are NaN.
    std::vector<double> values(std::size_t column) const;

private:
    /// Two values that a curve went through, one after the other.
    struct Stroke
    {
        double first, second;

        void add(double value);
    };

    void halve();

    std::size_t columns_;
    std::size_t most_buckets_;
    std::size_t rows_in_bucket_ = 1;
    std::size_t rows_in_last_ = 0;
    double last_time_ = 0;
    std::vector<double> starts_;
    std::vector<Stroke> strokes_; // by bucket, then column
};

/// Rows at even distances, for what moves without leaps: each so-manieth is kept, and when there are too many, every
/// other one of them.
class Thinned_Poses
{
public:
    explicit Thinned_Poses(std::size_t most) : most_(most) {}

    /// Whether a row is wanted now.
    bool wants() { return count_++ % step_ == 0; }
    void add(std::vector<double> row);

    const std::vector<std::vector<double>>& rows() const { return rows_; }

private:
    std::size_t most_;
    std::size_t step_ = 1;
    std::size_t count_ = 0;
    std::vector<std::vector<double>> rows_;
};

}
