#include "export_metrics.h"

#include <cctype>
#include <charconv>
#include <limits>
#include <ostream>

namespace zavra::tools
{

namespace
{

std::string plain(const std::string& text)
{
    std::string name;
    for (const char c : text)
        name += std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
    return name;
}

std::string escaped(const std::string& text, const char* special)
{
    std::string result;
    for (const char c : text) {
        if (std::string(special).find(c) != std::string::npos)
            result += '\\';
        result += c;
    }
    return result;
}

bool is_text(const Leaf& leaf)
{
    return leaf.kind == Leaf::Kind::text || leaf.kind == Leaf::Kind::bytes || leaf.kind == Leaf::Kind::names;
}

const Json& value_of(const Leaf& leaf, const Answer& answer)
{
    return answer.value.at(Json::json_pointer(leaf.pointer));
}

/// Empty where the line protocol cannot have the value.
std::string influx_field(const Leaf& leaf, const Answer& answer)
{
    if (is_text(leaf))
        return '"' + escaped(text_of(leaf, answer.value), "\"\\") + '"';
    const Json& value = value_of(leaf, answer);
    if (leaf.kind == Leaf::Kind::real) // a number, always with a point or exponent, or a text for what is none
        return value.is_number() ? value.dump() : "";
    constexpr auto most = static_cast<unsigned long long>(std::numeric_limits<long long>::max());
    return value.is_number_unsigned() && value.get<unsigned long long>() > most ? "" : value.dump() + 'i';
}

std::string prometheus_number(const Json& value)
{
    if (value == "nan")
        return "NaN";
    if (value == "inf" || value == "-inf")
        return value == "inf" ? "+Inf" : "-Inf";
    return value.dump();
}

}

void write_influx(std::ostream& out, const Source& source, const Answer& answer, unsigned long long epoch_msec)
{
    constexpr const char* special_in_keys = ",= \\";
    std::string fields;
    for (const Leaf& leaf : answer.leaves)
        if (const std::string field = influx_field(leaf, answer); !field.empty())
            fields.append(fields.empty() ? "" : ",")
                .append(escaped(leaf.path, special_in_keys))
                .append("=")
                .append(field);
    if (!fields.empty())
        out << "zavra_" << plain(source.name) << ",bus=" << escaped(source.bus, special_in_keys)
            << ",address=" << source.address << ' ' << fields << ' ' << epoch_msec << "000000\n"
            << std::flush;
}

void write_prometheus(std::ostream& out, const Source& source, const Answer& answer, unsigned long long epoch_msec)
{
    const std::string prefix = "zavra_" + plain(source.name) + '_';
    const std::string labels =
        "{bus=\"" + escaped(source.bus, "\"\\") + "\",address=\"" + std::to_string(source.address) + '"';
    const auto head = [&](const std::string& name, const std::string& help) {
        out << "# HELP " << prefix << name << ' ' << help << "\n# TYPE " << prefix << name << " gauge\n";
    };
    std::string texts;
    std::string before;
    for (const Leaf& leaf : answer.leaves) {
        const auto bracket = leaf.path.find('[');
        const std::string path = leaf.path.substr(0, bracket);
        if (is_text(leaf)) {
            texts += ',' + plain(path) + "=\"" + escaped(text_of(leaf, answer.value), "\"\\") + '"';
            continue;
        }
        if (path != before)
            head(plain(path), path + (leaf.unit.empty() ? "" : " in " + leaf.unit) + '.');
        before = path;
        out << prefix << plain(path) << labels;
        if (bracket != std::string::npos)
            out << ",index=\"" << leaf.path.substr(bracket + 1, leaf.path.find(']') - bracket - 1) << '"';
        out << "} " << prometheus_number(value_of(leaf, answer)) << '\n';
    }
    if (!texts.empty()) {
        head("info", "What is no number.");
        out << prefix << "info" << labels << texts << "} 1\n";
    }
    head("read_time_seconds", "When this was read, by the computer's clock.");
    char seconds[32];
    const auto end = std::to_chars(seconds, seconds + sizeof seconds, static_cast<double>(epoch_msec) / 1000).ptr;
    out << prefix << "read_time_seconds" << labels << "} " << std::string(seconds, end) << '\n' << std::flush;
}

}
