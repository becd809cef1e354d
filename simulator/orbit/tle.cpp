#include "tle.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <numbers>

namespace zavra::simulator
{

namespace
{

constexpr std::size_t line_length = 69;
constexpr double rad_per_degree = std::numbers::pi / 180.0;
constexpr double rad_per_min_per_rev_per_day = 2.0 * std::numbers::pi / 1440.0;

struct Line_Errors
{
    Tle_Error length, number, checksum;
};

bool is_digit(char c)
{
    return c >= '0' && c <= '9';
}

bool is_sign(char c)
{
    return c == ' ' || c == '+' || c == '-';
}

/// The sum of the digits, with 1 for each minus sign, modulo 10.
char checksum(std::string_view text)
{
    int sum = 0;
    for (const char c : text) {
        sum += is_digit(c) ? c - '0' : (c == '-' ? 1 : 0);
    }
    return static_cast<char>('0' + sum % 10);
}

Tle_Error check_line(std::string_view line, std::string_view start, const Line_Errors& errors)
{
    if (line.size() != line_length) {
        return errors.length;
    }
    if (!line.starts_with(start)) {
        return errors.number;
    }
    return checksum(line.substr(0, line_length - 1)) == line.back() ? Tle_Error::none : errors.checksum;
}

/// Reads the fields of a line by their columns, counted from 1. One unreadable field fails the line.
class Field_Reader
{
public:
    explicit Field_Reader(std::string_view line) : line_(line) {}

    bool ok() const { return ok_; }

    /// A decimal number with an optional sign, such as "-.00000084".
    double decimal(std::size_t first, std::size_t last)
    {
        std::string_view field = without_leading_blanks(text(first, last));
        const bool negative = field.starts_with('-');
        if (negative || field.starts_with('+')) {
            field.remove_prefix(1);
        }
        ok_ = ok_ && field.find_first_not_of("0123456789.") == std::string_view::npos;
        const double value = read<double>(field);
        return negative ? -value : value;
    }

    double decimal(std::size_t first, std::size_t last, double low, double high)
    {
        const double value = decimal(first, last);
        ok_ = ok_ && value >= low && value <= high;
        return value;
    }

    unsigned int integer(std::size_t first, std::size_t last) { return whole(text(first, last)); }

    /// Digits after an implied decimal point.
    double fraction(std::size_t first, std::size_t last)
    {
        return whole(text(first, last)) / std::pow(10.0, last - first + 1);
    }

    /// A signed five-digit mantissa after an implied decimal point and a signed one-digit exponent: "-13525-3".
    double scientific(std::size_t first)
    {
        const std::string_view field = text(first, first + 7);
        const char sign = field[0];
        const char exponent_sign = field[6];
        ok_ = ok_ && is_sign(sign) && is_sign(exponent_sign);
        const double mantissa = fraction(first + 1, first + 5) * (sign == '-' ? -1.0 : 1.0);
        const double power = std::pow(10.0, whole(field.substr(7)));
        return exponent_sign == '-' ? mantissa / power : mantissa * power;
    }

    unsigned int satellite_number()
    {
        const std::string_view field = text(3, 7);
        constexpr std::string_view letters = "ABCDEFGHJKLMNPQRSTUVWXYZ";
        const std::size_t letter = letters.find(field[0]);
        if (letter == std::string_view::npos) {
            return whole(field);
        }
        return (10 + static_cast<unsigned int>(letter)) * 10000 + whole(field.substr(1));
    }

private:
    std::string_view text(std::size_t first, std::size_t last) const
    {
        return line_.substr(first - 1, last - first + 1);
    }

    static std::string_view without_leading_blanks(std::string_view field)
    {
        return field.substr(std::min(field.find_first_not_of(' '), field.size()));
    }

    unsigned int whole(std::string_view field) { return read<unsigned int>(without_leading_blanks(field)); }

    template <typename T>
    T read(std::string_view field)
    {
        T value{};
        const char* const end = field.data() + field.size();
        const auto [stop, error] = std::from_chars(field.data(), end, value);
        ok_ = ok_ && error == std::errc() && stop == end;
        return value;
    }

    std::string_view line_;
    bool ok_ = true;
};

void read_epoch(Field_Reader& fields, Two_Line_Elements& elements)
{
    using namespace std::chrono;
    const int two_digits = static_cast<int>(fields.integer(19, 20));
    const year epoch_year{two_digits < 57 ? 2000 + two_digits : 1900 + two_digits};
    constexpr double last_moment = 0.99999999;
    elements.epoch_year = static_cast<int>(epoch_year);
    elements.epoch_day = fields.decimal(21, 32, 1.0, (epoch_year.is_leap() ? 366.0 : 365.0) + last_moment);
    if (!fields.ok()) {
        return;
    }

    const int day_of_year = static_cast<int>(elements.epoch_day);
    const auto since_1970 = (sys_days{epoch_year / January / 1} + days{day_of_year - 1}).time_since_epoch();
    elements.epoch = {julian_1970 + static_cast<double>(since_1970.count()), elements.epoch_day - day_of_year};
}

}

const char* to_string(Tle_Error error)
{
    static constexpr std::array texts{
        "no error",
        "line 1 does not have 69 characters",
        "line 1 does not start with \"1 \"",
        "wrong checksum in line 1",
        "unreadable number or impossible epoch in line 1",
        "line 2 does not have 69 characters",
        "line 2 does not start with \"2 \"",
        "wrong checksum in line 2",
        "unreadable or impossible number in line 2",
        "the lines belong to different satellites",
        "the period is 225 minutes or more",
        "the satellite has decayed",
        "the eccentricity is out of range",
        "the semi-latus rectum is negative",
        "the time is too far from the epoch",
    };
    const auto number = static_cast<std::size_t>(error);
    return number < texts.size() ? texts[number] : "unknown error";
}

Tle_Error parse_tle(std::string_view line_1, std::string_view line_2, Two_Line_Elements& elements)
{
    using enum Tle_Error;
    if (const Tle_Error error = check_line(line_1, "1 ", {line_1_length, line_1_number, line_1_checksum});
        error != none) {
        return error;
    }
    Two_Line_Elements read{};
    Field_Reader first{line_1};
    read.satellite_number = first.satellite_number();
    read_epoch(first, read);
    // The derivatives of the mean motion are of no use to the propagator, but a damaged one means a damaged line.
    first.decimal(34, 43);
    first.scientific(45);
    read.b_star = first.scientific(54);
    if (!first.ok()) {
        return line_1_field;
    }

    if (const Tle_Error error = check_line(line_2, "2 ", {line_2_length, line_2_number, line_2_checksum});
        error != none) {
        return error;
    }
    Field_Reader second{line_2};
    const unsigned int second_satellite_number = second.satellite_number();
    read.inclination = second.decimal(9, 16, 0.0, 180.0) * rad_per_degree;
    read.right_ascension = second.decimal(18, 25, 0.0, 360.0) * rad_per_degree;
    read.eccentricity = second.fraction(27, 33);
    read.argument_of_perigee = second.decimal(35, 42, 0.0, 360.0) * rad_per_degree;
    read.mean_anomaly = second.decimal(44, 51, 0.0, 360.0) * rad_per_degree;
    constexpr double smallest_mean_motion = 1e-8;
    read.mean_motion = second.decimal(53, 63, smallest_mean_motion, 100.0) * rad_per_min_per_rev_per_day;
    read.revolution_number = second.integer(64, 68);
    if (!second.ok()) {
        return line_2_field;
    }
    if (second_satellite_number != read.satellite_number) {
        return satellite_numbers_differ;
    }
    elements = read;
    return none;
}

}
