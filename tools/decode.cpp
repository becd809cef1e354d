#include "decode.h"
#include "captured_line.h"
#include "output.h"

#include "../catalogue/commands.h"

#include <algorithm>
#include <istream>
#include <map>
#include <ostream>

namespace zavra::tools
{

namespace
{

/// The beginning of a line that is none of ours, as it may be printed.
std::string quoted(const std::string& line)
{
    constexpr std::size_t most = 64;
    std::string text = line.substr(0, most);
    for (char& c : text)
        if (c < ' ' || c > '~')
            c = '?';
    return line.size() > most ? text + "..." : text;
}

/// What a frame turned out to be.
struct Explanation
{
    std::string title;
    Answer values;
    bool good = true;
};

class Decoder
{
public:
    Explanation explain(Direction direction, const Octets& bytes)
    {
        if (bytes.empty())
            return {"no bytes", {}, false};
        if (direction == Direction::unknown)
            direction = find_requests(take_apart(bytes)).empty() ? Direction::response : Direction::request;
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
        const Request_Frame frame = take_apart(bytes);
        if (!frame.has_header)
            return {"request of " + std::to_string(bytes.size()) + " bytes, too short for a frame", {}, false};
        const std::string title = "request 0x" + json::hexadecimal(std::span(bytes).first(sizeof frame.identifier));
        const std::string size = " with " + std::to_string(frame.payload.size()) + " bytes of payload, ";
        if (!frame.whole())
            return {title + size + "but a header for " + std::to_string(frame.announced), {}, false};
        last_ = find_requests(frame);
        if (last_.empty())
            return {title + size + "no known command", {}, false};
        if (any_size(last_.front()->request))
            return {title + ' ' + names_of(last_) + " with " + json::hexadecimal(frame.payload), {}, true};
        return {title + ' ' + names_of(last_),
                {leaves_of(last_.front()->request), last_.front()->decode_request(frame.payload)},
                true};
    }

    Explanation response(const Octets& bytes)
    {
        const auto payload = std::span(bytes).first(bytes.size() - crc_bytes);
        const std::string size = std::to_string(payload.size()) + " bytes";
        if (last_.empty())
            return {"response of " + size + " to no known request", {}, false};
        const auto response_size = [](const Described_Command* command) { return wire_bytes(command->response); };
        if (answered_ || response_size(last_.front()) == 0)
            return {"native reply of the star tracker, " + size + ": " + json::hexadecimal(payload), {}, true};
        // Commands that share identifier and request are told apart by the response.
        const auto found = std::find_if(last_.begin(), last_.end(), [&](const Described_Command* command) {
            return response_size(command) == payload.size();
        });
        if (found == last_.end())
            return {"response of " + size + " to " + names_of(last_) + ", which has " +
                        std::to_string(response_size(last_.front())),
                    {},
                    false};
        last_ = {*found};
        return {"response to " + names_of(last_),
                {leaves_of(last_.front()->response), last_.front()->decode_response(payload)},
                true};
    }

    std::vector<const Described_Command*> last_; // what the last request may have been
    bool answered_ = false;
};

void write(std::ostream& out, std::size_t number, const Captured_Line& line, const Explanation& explanation, bool json)
{
    if (json) {
        Json object{{"line", number}, {"frame", explanation.title}, {"good", explanation.good}};
        if (!line.time.empty())
            object["time"] = line.time;
        object["values"] = explanation.values.value;
        out << json_text(object, -1) << '\n';
        return;
    }
    out << "line " << number << ": " << (line.time.empty() ? "" : quoted(line.time) + " ") << explanation.title << '\n';
    write_rows(out, "    ", explanation.values.leaves,
               [&](const Leaf& leaf) { return text_with_unit(leaf, explanation.values.value); });
}

Explanation explain(Decoder& decoder, const Captured_Line& line)
{
    const auto bytes = line.bytes();
    if (!bytes)
        return {"not hexadecimal: " + quoted(line.text), {}, false};
    if (bytes->empty() && !line.problem.empty())
        return {"no answer: " + quoted(line.problem), {}, false};
    Explanation explanation = decoder.explain(line.direction, *bytes);
    if (!line.problem.empty())
        explanation.title += ", " + quoted(line.problem);
    return explanation;
}

}

bool decode(std::istream& in, std::ostream& out, bool json)
{
    std::map<std::string, Decoder> decoders; // requests and responses belong together unit by unit
    bool all_good = true;
    bool in_dump = false;
    std::size_t number = 0;
    for (std::string raw; read_line(in, raw);) {
        ++number;
        const Captured_Line line = understand(raw);
        in_dump = in_dump || line.of_dump;
        const bool blank = raw.find_first_not_of(" \t\r") == std::string::npos;
        // Between its frames a dump has lines of its own.
        if (blank || raw.starts_with('#') || (in_dump && line.direction == Direction::unknown))
            continue;
        const Explanation explanation = explain(decoders[line.unit], line);
        write(out, number, line, explanation, json);
        out.flush();
        all_good = all_good && explanation.good;
    }
    return all_good;
}

}
