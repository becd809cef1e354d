#include "exports.h"
#include "json.h"

#include <algorithm>
#include <cerrno>
#include <istream>
#include <ostream>
#include <set>
#include <system_error>

namespace zavra
{

namespace
{

constexpr unsigned long long usec_per_msec = 1000;
constexpr unsigned long long longest_gap_msec = 1000;
constexpr unsigned long long idle_usec = 100;       // before the first transaction and behind the last
constexpr unsigned long long stretch_usec = 25'000; // how long a unit that hangs is drawn to hold the clock

/// The two lines. A bit lasts 10 us: its data is there 2 us after the clock has fallen and 3 us before it rises.
class Wave
{
public:
    Wave(std::ostream& out, const std::string& bus) : out_(out)
    {
        out << "$timescale 1 us $end\n$scope module " << bus
            << " $end\n$var wire 1 c SCL $end\n$var wire 1 d SDA $end\n$upscope $end\n$enddefinitions $end\n"
               "#0\n1c\n1d\n";
    }

    void wait(unsigned long long usec) { now_ += usec; }

    void start()
    {
        set('d', false);
        wait(5);
        set('c', false);
    }

    void stop()
    {
        rise(false);
        wait(5);
        set('d', true);
        wait(5);
    }

    void bit(bool value)
    {
        rise(value);
        wait(5);
        set('c', false);
    }

    void octet(unsigned int value)
    {
        for (unsigned int mask = 0x80; mask != 0; mask >>= 1U)
            bit((value & mask) != 0);
    }

    void end()
    {
        wait(idle_usec);
        out_ << '#' << now_ << '\n';
    }

private:
    void rise(bool value)
    {
        wait(2);
        set('d', value);
        wait(3);
        set('c', true);
    }

    void set(char line, bool value)
    {
        bool& before = line == 'c' ? scl_ : sda_;
        if (before != value)
            out_ << '#' << now_ << '\n' << (value ? '1' : '0') << line << '\n';
        before = value;
    }

    std::ostream& out_;
    unsigned long long now_ = 0;
    bool scl_ = true;
    bool sda_ = true;
};

struct Line
{
    unsigned long long time_msec;
    std::string bus;
    unsigned int address;
    bool is_read;
    Octets bytes;
    std::string error;
};

Line understand(const std::string& text, const std::string& where)
{
    const Json object = Json::parse(text, nullptr, false);
    if (!object.is_object())
        json::fail(where, "expected a line of a journal");
    const auto word = [&](const char* name) {
        const Json& value = json::member(object, name, where);
        if (!value.is_string())
            json::fail(where, std::string(name) + ": expected a text, got " + json::shown(value));
        return value.get<std::string>();
    };
    const std::string direction = word("direction");
    if (direction != "read" && direction != "write")
        json::fail(where, "direction: expected read or write, got " + direction);
    return {json::to_integer<unsigned long long>(json::member(object, "time_msec", where), where + ": time_msec"),
            word("bus"),
            json::to_integer<unsigned char>(json::member(object, "address", where), where + ": address"),
            direction == "read",
            json::to_bytes(json::member(object, "bytes", where), where + ": bytes"),
            object.contains("error") ? word("error") : ""};
}

void draw(Wave& wave, const Line& line)
{
    const auto is = [&](int error) { return line.error == std::generic_category().message(error); };
    if (is(EIO)) // nothing moves on a dead bus
        return;
    wave.start();
    wave.octet(line.address << 1U | (line.is_read ? 1U : 0U));
    if (is(ETIMEDOUT))
        wave.wait(stretch_usec);
    wave.bit(!line.error.empty());
    if (line.error.empty())
        for (std::size_t i = 0; i < line.bytes.size(); ++i) {
            wave.octet(line.bytes[i]);
            wave.bit(line.is_read && i + 1 == line.bytes.size()); // the bus master has read enough
        }
    wave.stop();
}

}

void write_vcd(std::istream& journal, const std::string& bus, std::ostream& out)
{
    Wave wave(out, bus);
    wave.wait(idle_usec);
    std::set<std::string> others;
    bool found = false;
    unsigned long long before_msec = 0;
    std::size_t number = 0;
    for (std::string text; std::getline(journal, text);) {
        ++number;
        if (text.empty())
            continue;
        const Line line = understand(text, "line " + std::to_string(number));
        if (line.bus != bus) {
            others.insert(line.bus);
            continue;
        }
        if (found && line.time_msec > before_msec)
            wave.wait(std::min(line.time_msec - before_msec, longest_gap_msec) * usec_per_msec);
        found = true;
        before_msec = line.time_msec;
        draw(wave, line);
    }
    if (!found) {
        std::string names;
        for (const std::string& name : others)
            names += (names.empty() ? "" : ", ") + name;
        json::fail("", "no transaction on bus " + bus + (names.empty() ? "" : "; there is: " + names));
    }
    wave.end();
}

}
