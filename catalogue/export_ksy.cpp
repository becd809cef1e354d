#include "../common/text.h"
#include "export_layout.h"
#include "exports.h"

#include <map>
#include <sstream>

namespace zavra
{

namespace
{

std::string type_of(const Place& place)
{
    const char* const order = place.little_endian ? "le" : "";
    switch (place.kind) {
    case Item::Kind::real:
        return 'f' + std::to_string(place.size);
    case Item::Kind::signed_integer:
        return 's' + std::to_string(place.size) + order;
    case Item::Kind::unsigned_integer:
        return 'u' + std::to_string(place.size) + (place.size == 1 ? "" : order);
    default:
        return "";
    }
}

std::string lower(std::string text)
{
    make_lower_case(text);
    return text;
}

std::string request_type(const Described_Command& command)
{
    return lower(command.method) + "_request";
}

void write_seq(std::ostream& out, const std::vector<Place>& places)
{
    out << "    seq:\n";
    int unused = 0;
    for (const Place& place : places) {
        if (place.name.empty())
            out << "      - id: unused_" << ++unused << "\n        size: " << place.size << '\n';
        else
            out << "      - id: " << lower(plain_name(place)) << '\n';
        if (place.name.empty())
            continue;
        if (place.kind == Item::Kind::text)
            out << "        type: strz\n        encoding: ISO-8859-1\n        size: " << place.size << '\n';
        else if (place.kind == Item::Kind::bytes && place.size == 0)
            out << "        size-eos: true\n";
        else if (place.kind == Item::Kind::bytes)
            out << "        size: " << place.size << '\n';
        else
            out << "        type: " << type_of(place) << '\n';
        if (!place.choices.empty())
            out << "        enum: " << place.choice << '\n';
        if (*place.unit != '\0')
            out << "        doc: \"unit: " << place.unit << "\"\n        -unit: \"" << place.unit << "\"\n";
        if (place.event >= 0)
            out << "        doc: has a meaning when num_event is greater than " << place.event << '\n';
    }
}

using Same_Identifier = std::map<std::size_t, const Described_Command*>; // by bytes of the request

void write_payload_cases(std::ostream& out, const std::map<unsigned short, Same_Identifier>& requests)
{
    for (const auto& [identifier, commands] : requests)
        out << "        " << hexadecimal_identifier(identifier) << ": "
            << (commands.size() == 1 ? request_type(*commands.begin()->second)
                                     : "request_" + hexadecimal_identifier(identifier).substr(2))
            << '\n';
}

/// Requests that share an identifier are told apart by their length.
void write_types_by_length(std::ostream& out, const std::map<unsigned short, Same_Identifier>& requests)
{
    for (const auto& [identifier, commands] : requests) {
        if (commands.size() == 1)
            continue;
        out << "  request_" << hexadecimal_identifier(identifier).substr(2)
            << ":\n    seq:\n      - id: body\n        size-eos: true\n        type:\n"
               "          switch-on: _io.size\n          cases:\n";
        for (const auto& [size, command] : commands)
            out << "            " << size << ": " << request_type(*command) << '\n';
    }
}

}

std::string kaitai_struct()
{
    std::map<unsigned short, Same_Identifier> requests; // with payload
    std::map<std::string, std::span<const char* const>> enumerations;
    for (const Described_Command& command : described_commands()) {
        for (const Items items : {command.request, command.response})
            for (const Place& place : places_of(command, items))
                if (!place.choices.empty())
                    enumerations.emplace(place.choice, place.choices);
        if (!command.request.empty())
            requests[command.identifier].emplace(wire_bytes(command.request), &command);
    }

    std::ostringstream out;
    out << "meta:\n"
           "  id: zavra_100\n"
           "  title: ZAVRA-100 attitude determination and control unit, I2C frames\n"
           "  license: Apache-2.0\n"
           "  ks-version: 0.9\n"
           "  endian: be\n"
           "doc: |\n"
           "  A request. A response does not say what it is: it is read as the type that is named after the request's\n"
           "  command, with _response behind. The CRC-8 (polynomial 0x07, from 0x00) is over all bytes before it.\n"
           "seq:\n"
           "  - id: identifier\n"
           "    type: u2\n"
           "  - id: len_payload\n"
           "    type: u2le\n"
           "  - id: payload\n"
           "    size: len_payload\n"
           "    type:\n"
           "      switch-on: identifier\n"
           "      cases:\n";
    write_payload_cases(out, requests);
    out << "  - id: crc\n    type: u1\ntypes:\n";
    write_types_by_length(out, requests);
    for (const Described_Command& command : described_commands()) {
        if (!command.request.empty()) {
            out << "  " << request_type(command) << ":\n";
            write_seq(out, places_of(command, command.request));
        }
        if (!command.response.empty()) {
            out << "  " << lower(command.method) << "_response:\n";
            auto places = places_of(command, command.response);
            places.push_back({"crc", "", Item::Kind::unsigned_integer, 1});
            write_seq(out, places);
        }
    }
    out << "enums:\n";
    for (const auto& [name, labels] : enumerations) {
        out << "  " << name << ":\n";
        for (std::size_t i = 0; i < labels.size(); ++i)
            out << "    " << i << ": " << lower(labels[i]) << '\n';
    }
    return out.str();
}

}
