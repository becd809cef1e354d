#include "thinning.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace zavra::simulator
{

void append_json(std::string& text, double number, int digits)
{
    if (!std::isfinite(number)) {
        text += "null";
        return;
    }
    char characters[32];
    text.append(
        characters,
        std::to_chars(characters, characters + sizeof characters, number, std::chars_format::general, digits).ptr);
}

void Thinned_Curves::Stroke::add(double value)
{
    const auto [least, greatest] = std::minmax(first, second);
    if (std::isnan(first))
        *this = {value, value};
    else if (value > greatest)
        *this = {least, value};
    else if (value < least)
        *this = {greatest, value};
}

void Thinned_Curves::add(double time, std::span<const double> row)
{
    last_time_ = time;
    if (!starts_.empty() && rows_in_last_ < rows_in_bucket_) {
        Stroke* stroke = &strokes_[(starts_.size() - 1) * columns_];
        for (const double value : row)
            (stroke++)->add(value);
        ++rows_in_last_;
        return;
    }
    if (starts_.size() == most_buckets_) {
        halve();
        add(time, row);
        return;
    }
    starts_.push_back(time);
    for (const double value : row)
        strokes_.push_back({value, value});
    rows_in_last_ = 1;
}

void Thinned_Curves::halve()
{
    const std::size_t pairs = starts_.size() / 2;
    for (std::size_t to = 0; to < pairs; ++to) {
        starts_[to] = starts_[2 * to];
        for (std::size_t i = 0; i < columns_; ++i) {
            Stroke stroke = strokes_[2 * to * columns_ + i];
            const Stroke& next = strokes_[(2 * to + 1) * columns_ + i];
            stroke.add(next.first);
            stroke.add(next.second);
            strokes_[to * columns_ + i] = stroke;
        }
    }
    starts_.resize(pairs);
    strokes_.resize(pairs * columns_);
    rows_in_bucket_ *= 2;
    rows_in_last_ = rows_in_bucket_;
}

std::vector<double> Thinned_Curves::times() const
{
    std::vector<double> times;
    for (std::size_t i = 0; i < starts_.size(); ++i) {
        const double end = i + 1 < starts_.size() ? starts_[i + 1] : last_time_;
        times.push_back(starts_[i]);
        if (rows_in_bucket_ > 1)
            times.push_back((starts_[i] + end) / 2);
    }
    if (!times.empty())
        times.back() = last_time_;
    return times;
}

std::vector<double> Thinned_Curves::values(std::size_t column) const
{
    std::vector<double> values;
    for (std::size_t i = column; i < strokes_.size(); i += columns_) {
        values.push_back(strokes_[i].first);
        if (rows_in_bucket_ > 1)
            values.push_back(strokes_[i].second);
    }
    if (std::ranges::all_of(values, [](double value) { return std::isnan(value); }))
        values.clear();
    return values;
}

void Thinned_Poses::add(std::vector<double> row)
{
    rows_.push_back(std::move(row));
    if (rows_.size() < most_)
        return;
    for (std::size_t i = 0; 2 * i < rows_.size(); ++i)
        std::swap(rows_[i], rows_[2 * i]);
    rows_.resize((rows_.size() + 1) / 2);
    step_ *= 2;
}

}
