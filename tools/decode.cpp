#include "decode.h"
#include "method.h"
#include "output.h"

#include "../device/protocol/codec.h"
#include "../device/protocol/crc8.h"
#include "../device/protocol/frame.h"
#include "../device/protocol/startracker_orbit.h"

#include <algorithm>
#include <cctype>
#include <istream>
#include <optional>
#include <ostream>

namespace zavra::tools
{

namespace
{

enum class Direction { unknown, request, response };

struct Line
{
    Direction direction = Direction::unknown;
    bool of_dump = false;
    std::string text; ///< hexadecimal digits, if it is what it should be
};

std::string without_colours(const std::string& line)
{
    std::string text;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '\033')
            i = std::min(line.find('m', i), line.size() - 1);
        else
            text += line[i];
    }
    return text;
}

Line understand(const std::string& raw)
{
    Line line;
    line.of_dump = raw.find('\033') != std::string::npos;
    line.text = without_colours(raw);
    for (const auto& [label, direction] :
         {std::pair{"Command (hex) : ", Direction::request}, std::pair{"Response (hex) : ", Direction::response},
          std::pair{">", Direction::request}, std::pair{"<", Direction::response}}) {
        const bool of_dump = label[1] != '\0';
        if (const auto found = line.text.find(label); of_dump ? found != std::string::npos : found == 0) {
            line.of_dump = line.of_dump || of_dump;
            line.direction = direction;
            line.text.erase(0, found + std::string(label).size());
            break;
        }
    }
    return line;
}

/// Bytes in hexadecimal, with or without blanks, colons, commas or 0x between them.
std::optional<Octets> bytes_of(std::string text)
{
    for (auto prefix = text.find("0x"); prefix != std::string::npos; prefix = text.find("0x", prefix))
        text.replace(prefix, 2, " ");
    std::erase_if(text, [](unsigned char c) { return std::isspace(c) != 0 || c == ':' || c == ','; });
    if (text.size() % 2 != 0 || text.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
        return std::nullopt;
    return json::to_bytes(text, "");
}

bool crc_is_right(const Octets& bytes)
{
    return crc8(std::span(bytes).first(bytes.size() - crc_bytes)) == bytes.back();
}

bool looks_like_request(const Octets& bytes)
{
    return bytes.size() >= frame_header_bytes + crc_bytes &&
           get_little_endian<unsigned short>(&bytes[2]) == bytes.size() - frame_header_bytes - crc_bytes &&
           !find_requests(get<unsigned short>(bytes.data()), bytes.size() - frame_header_bytes - crc_bytes).empty();
}

/// What a frame turned out to be.
struct Explanation
{
    std::string title;
    Answer values;
    bool good = true;
};

/// The leaves of decoded values, with the units that the methods' own descriptions have for them.
Leaves leaves_of(const Json& value, const Leaves& known)
{
    Leaves leaves;
    if (value.empty())
        return leaves;
    const Json flat = value.flatten();
    for (const auto& item : flat.items()) {
        const std::string& pointer = item.key();
        const auto found =
            std::find_if(known.begin(), known.end(), [&](const Leaf& leaf) { return leaf.pointer == pointer; });
        if (found != known.end()) {
            leaves.push_back(*found);
            continue;
        }
        std::string path = pointer.substr(1);
        std::replace(path.begin(), path.end(), '/', '.');
        leaves.push_back({path, pointer, "", item.value().is_string() ? Leaf::Kind::text : Leaf::Kind::real});
    }
    return leaves;
}

class Decoder
{
public:
    Explanation explain(Direction direction, const Octets& bytes)
    {
        if (direction == Direction::unknown)
            direction = looks_like_request(bytes) ? Direction::request : Direction::response;
        Explanation explanation = direction == Direction::request ? request(bytes) : response(bytes);
        const bool right = crc_is_right(bytes);
        explanation.title += right ? ", CRC right" : ", CRC WRONG";
        explanation.good = explanation.good && right;
        answered_ = direction == Direction::response && right;
        return explanation;
    }

private:
    Explanation request(const Octets& bytes)
    {
        last_.clear();
        if (bytes.size() < frame_header_bytes + crc_bytes)
            return {"request of " + std::to_string(bytes.size()) + " bytes, too short for a frame", {}, false};
        const auto identifier = get<unsigned short>(bytes.data());
        const std::string number = "0x" + json::hexadecimal(std::span(bytes).first(sizeof identifier));
        const auto payload =
            std::span(bytes).subspan(frame_header_bytes, bytes.size() - frame_header_bytes - crc_bytes);
        if (get_little_endian<unsigned short>(&bytes[2]) != payload.size())
            return {"request " + number + " with " + std::to_string(payload.size()) +
                        " bytes of payload, but a header for " +
                        std::to_string(get_little_endian<unsigned short>(&bytes[2])),
                    {},
                    false};
        // The one command of any length.
        if (constexpr auto& native = protocol::send_startracker_native_command; identifier == native.identifier) {
            last_ = {find_command(native.method)};
            return {"request " + number + ' ' + names() + " with " + json::hexadecimal(payload), {}, true};
        }
        last_ = find_requests(identifier, payload.size());
        if (last_.empty())
            return {"request " + number + " with " + std::to_string(payload.size()) +
                        " bytes of payload, no known command",
                    {},
                    false};
        return {"request " + number + ' ' + names(), values(last_.front()->decode_request(payload), true), true};
    }

    Explanation response(const Octets& bytes)
    {
        const auto payload = std::span(bytes).first(bytes.size() - crc_bytes);
        const std::string size = std::to_string(payload.size()) + " bytes";
        if (last_.empty())
            return {"response of " + size + " to no known request", {}, false};
        const bool wants_none = last_.front()->response_size == 0;
        if (answered_ || wants_none)
            return {"native reply of the star tracker, " + size + ": " + json::hexadecimal(payload), {}, true};
        // Commands that share identifier and request are told apart by the response.
        const auto fits = [&](const Described_Command* command) { return command->response_size == payload.size(); };
        const auto found = std::find_if(last_.begin(), last_.end(), fits);
        if (found == last_.end())
            return {"response of " + size + " to " + names() + ", which has " +
                        std::to_string(last_.front()->response_size),
                    {},
                    false};
        last_ = {*found};
        return {"response to " + names(), values(last_.front()->decode_response(payload), false), true};
    }

    std::string names() const
    {
        std::string text;
        for (const Described_Command* command : last_)
            text += (text.empty() ? "" : " or ") + std::string(command->method);
        return text;
    }

    Answer values(Json value, bool of_request) const
    {
        const Method* method = find_method(last_.front()->method);
        const Leaves known = method == nullptr ? Leaves() : of_request ? method->arguments : method->results;
        Leaves leaves = leaves_of(value, known);
        return {std::move(leaves), std::move(value)};
    }

    std::vector<const Described_Command*> last_; // what the last request may have been
    bool answered_ = false;
};

void write(std::ostream& out, std::size_t number, const Explanation& explanation, bool json)
{
    if (json) {
        Json line{{"line", number}, {"frame", explanation.title}, {"good", explanation.good}};
        line["values"] = explanation.values.value;
        out << line.dump() << '\n';
        return;
    }
    out << "line " << number << ": " << explanation.title << '\n';
    write_rows(out, "    ", explanation.values.leaves,
               [&](const Leaf& leaf) { return text_with_unit(leaf, explanation.values.value); });
}

}

bool decode(std::istream& in, std::ostream& out, bool json)
{
    Decoder decoder;
    bool all_good = true;
    bool in_dump = false;
    std::size_t number = 0;
    for (std::string raw; std::getline(in, raw);) {
        ++number;
        const Line line = understand(raw);
        in_dump = in_dump || line.of_dump;
        const bool blank = line.text.find_first_not_of(" \t\r") == std::string::npos;
        const auto bytes = bytes_of(line.text);
        // Between its frames a dump has lines of its own.
        if (blank || line.text.starts_with('#') || (in_dump && line.direction == Direction::unknown))
            continue;
        Explanation explanation{"not hexadecimal: " + line.text, {}, false};
        if (bytes)
            explanation = decoder.explain(line.direction, *bytes);
        write(out, number, explanation, json);
        out.flush();
        all_good = all_good && explanation.good;
    }
    return all_good;
}

}
