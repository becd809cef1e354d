#include "../protocol/frame.h"
#include "export_layout.h"
#include "exports.h"

#include <map>
#include <sstream>

namespace zavra
{

namespace
{

using Attributes = std::vector<std::pair<const char*, std::string>>;

/// An element that is open while it lives. No text and no attribute here has a character that XML would escape.
class Element
{
public:
    Element(std::ostream& out, const char* name, const Attributes& attributes) : Element(out, 0, name, attributes) {}
    Element(const Element& parent, const char* name, const Attributes& attributes = {})
        : Element(parent.out_, parent.depth_ + 1, name, attributes)
    {
    }
    ~Element() { out_ << indent_ << "</" << name_ << ">\n"; }
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;

    /// One without others inside.
    void leaf(const char* name, const Attributes& attributes, const std::string& text = "") const
    {
        out_ << indent_ << "  ";
        open(name, attributes, text.empty() ? "/>\n" : ">" + text + "</" + name + ">\n");
    }

private:
    Element(std::ostream& out, std::size_t depth, const char* name, const Attributes& attributes)
        : out_(out),
          depth_(depth),
          indent_(2 * depth, ' '),
          name_(name)
    {
        out_ << indent_;
        open(name, attributes, ">\n");
    }

    void open(const char* name, const Attributes& attributes, const std::string& end) const
    {
        out_ << '<' << name;
        for (const auto& [key, value] : attributes)
            out_ << ' ' << key << "=\"" << value << '"';
        out_ << end;
    }

    std::ostream& out_;
    std::size_t depth_;
    std::string indent_;
    std::string name_;
};

std::string bits(std::size_t bytes)
{
    return std::to_string(8 * bytes);
}

std::string type_name(const Place& place)
{
    if (!place.choices.empty())
        return place.choice;
    std::string name;
    switch (place.kind) {
    case Item::Kind::real:
        name = "float" + bits(place.size);
        break;
    case Item::Kind::signed_integer:
        name = "int" + bits(place.size);
        break;
    case Item::Kind::text:
        name = "text" + std::to_string(place.size);
        break;
    case Item::Kind::unsigned_integer:
        name = (place.hexadecimal ? "word" : "uint") + bits(place.size);
        break;
    default:
        name = "bytes" + std::to_string(place.size);
    }
    name += place.little_endian ? "_little_endian" : "";
    name += *place.unit == '\0' ? "" : '_' + plain_unit(place.unit);
    return name + (place.range == nullptr ? "" : std::string("_") + place.range);
}

void write_encoding(const Element& in, const Place& place)
{
    const bool number = place.kind != Item::Kind::text && place.kind != Item::Kind::bytes;
    Attributes attributes;
    if (number)
        attributes = {{"sizeInBits", bits(place.size)},
                      {"encoding", place.kind == Item::Kind::real             ? "IEEE754_1985"
                                   : place.kind == Item::Kind::signed_integer ? "twosComplement"
                                                                              : "unsigned"},
                      {"byteOrder", place.little_endian ? "leastSignificantByteFirst" : "mostSignificantByteFirst"}};
    if (place.kind == Item::Kind::real) {
        in.leaf("FloatDataEncoding", attributes);
    } else if (number) {
        in.leaf("IntegerDataEncoding", attributes);
    } else if (place.kind == Item::Kind::text) {
        const Element encoding(in, "StringDataEncoding", {{"encoding", "ISO-8859-1"}});
        const Element size(encoding, "SizeInBits");
        {
            const Element fixed(size, "Fixed");
            fixed.leaf("FixedValue", {}, bits(place.size));
        }
        size.leaf("TerminationChar", {}, "00");
    } else {
        const Element encoding(in, "BinaryDataEncoding");
        const Element size(encoding, "SizeInBits");
        if (place.size != 0) {
            size.leaf("FixedValue", {}, bits(place.size));
        } else {
            const Element dynamic(size, "DynamicValue");
            dynamic.leaf("ArgumentInstanceRef", {{"argumentRef", "length"}});
            dynamic.leaf("LinearAdjustment", {{"slope", "8"}});
        }
    }
}

/// @param of  "Parameter" or "Argument"
void write_type(const Element& in, const std::string& of, const Place& place)
{
    const bool real = place.kind == Item::Kind::real;
    const bool integer = place.kind == Item::Kind::signed_integer || place.kind == Item::Kind::unsigned_integer;
    Attributes attributes{{"name", type_name(place)}};
    if (place.choices.empty() && (real || integer))
        attributes.emplace_back("sizeInBits", bits(place.size));
    if (place.choices.empty() && integer)
        attributes.emplace_back("signed", place.kind == Item::Kind::signed_integer ? "true" : "false");
    const std::string name = (!place.choices.empty()           ? "Enumerated"
                              : real                           ? "Float"
                              : integer                        ? "Integer"
                              : place.kind == Item::Kind::text ? "String"
                                                               : "Binary") +
                             of + "Type";
    const Element type(in, name.c_str(), attributes);
    if (*place.unit != '\0') {
        const Element units(type, "UnitSet");
        units.leaf("Unit", {}, place.unit);
    }
    write_encoding(type, place);
    if (!place.choices.empty()) {
        const Element list(type, "EnumerationList");
        for (std::size_t i = 0; i < place.choices.size(); ++i)
            list.leaf("Enumeration", {{"value", std::to_string(i)}, {"label", place.choices[i]}});
        return;
    }
    Attributes range;
    if (place.limit != nullptr) {
        range = {{"minInclusive", std::string("-") + place.limit}, {"maxInclusive", place.limit}};
    } else if (place.kind == Item::Kind::unsigned_integer && place.size < sizeof(long long)) {
        // XTCE's limits are signed 64-bit numbers.
        range = {{"minInclusive", "0"}, {"maxInclusive", std::to_string((1ULL << 8 * place.size) - 1)}};
    } else {
        return;
    }
    if (of == "Argument") {
        const Element set(type, "ValidRangeSet");
        set.leaf("ValidRange", range);
    } else {
        type.leaf("ValidRange", range);
    }
}

/// @param of  "Parameter" or "Argument"
void write_types(const Element& in, const std::string& of, const std::vector<Place>& places)
{
    std::map<std::string, Place> types;
    for (const Place& place : places)
        if (!place.name.empty())
            types.emplace(type_name(place), place);
    const std::string set_name = of + "TypeSet";
    const Element set(in, set_name.c_str());
    for (const auto& [name, place] : types)
        write_type(set, of, place);
}

/// The size of a frame, and that its last byte is a CRC-8 over those before it.
void write_frame_encoding(const Element& in, std::size_t frame_bytes)
{
    const Element encoding(in, "BinaryEncoding");
    {
        const Element check(encoding, "ErrorDetectCorrect");
        const Element crc(
            check, "CRC",
            {{"width", "8"}, {"reference", "start"}, {"bitsFromReference", bits(frame_bytes - crc_bytes)}});
        crc.leaf("Polynomial", {}, "07");
        crc.leaf("InitRemainder", {}, "00");
        crc.leaf("FinalXOR", {}, "00");
    }
    const Element size(encoding, "SizeInBits");
    size.leaf("FixedValue", {}, bits(frame_bytes));
}

Attributes described_as(const Place& place)
{
    Attributes attributes{{"name", plain_name(place)}};
    if (place.event >= 0)
        attributes.emplace_back("shortDescription",
                                "Has a meaning when num_event is greater than " + std::to_string(place.event));
    return attributes;
}

const Place crc_place{"crc", "", Item::Kind::unsigned_integer, crc_bytes};

void write_response(const Element& in, const Described_Command& command)
{
    auto places = places_of(command, command.response);
    places.push_back(crc_place);
    const Element system(in, "SpaceSystem", {{"name", command.method}});
    const Element telemetry(system, "TelemetryMetaData");
    {
        const Element parameters(telemetry, "ParameterSet");
        for (const Place& place : places)
            if (!place.name.empty()) {
                auto attributes = described_as(place);
                attributes.emplace_back("parameterTypeRef", type_name(place));
                parameters.leaf("Parameter", attributes);
            }
    }
    const Element containers(telemetry, "ContainerSet");
    const Element container(
        containers, "SequenceContainer",
        {{"name", "Response"},
         {"shortDescription",
          "Response to the request " + hexadecimal_identifier(command.identifier) + ' ' + command.method}});
    write_frame_encoding(container, wire_bytes(command.response) + crc_bytes);
    const Element entries(container, "EntryList");
    std::size_t skipped = 0;
    for (const Place& place : places) {
        if (place.name.empty()) {
            skipped += place.size;
        } else if (skipped == 0) {
            entries.leaf("ParameterRefEntry", {{"parameterRef", plain_name(place)}});
        } else {
            const Element entry(entries, "ParameterRefEntry", {{"parameterRef", plain_name(place)}});
            const Element location(entry, "LocationInContainerInBits", {{"referenceLocation", "previousEntry"}});
            location.leaf("FixedValue", {}, bits(skipped));
            skipped = 0;
        }
    }
}

const Place length_place{"length", "", Item::Kind::unsigned_integer, sizeof(Request_Frame::announced), false, true};

void write_request(const Element& in, const Described_Command& command)
{
    const auto places = places_of(command, command.request);
    const bool any = any_size(command.request);
    const Element meta_command(in, "MetaCommand", {{"name", command.method}});
    if (wire_bytes(command.request) != 0 || any) {
        const Element arguments(meta_command, "ArgumentList");
        if (any)
            arguments.leaf("Argument", {{"name", length_place.name}, {"argumentTypeRef", type_name(length_place)}});
        for (const Place& place : places)
            if (!place.name.empty())
                arguments.leaf("Argument", {{"name", plain_name(place)}, {"argumentTypeRef", type_name(place)}});
    }
    const std::string name = std::string(command.method) + "_Request";
    const Element container(meta_command, "CommandContainer", {{"name", name}});
    if (!any)
        write_frame_encoding(container, frame_header_bytes + wire_bytes(command.request) + crc_bytes);
    const Element entries(container, "EntryList");
    const auto fixed = [&](const char* what, const std::string& digits) {
        entries.leaf("FixedValueEntry",
                     {{"name", what}, {"binaryValue", digits}, {"sizeInBits", std::to_string(digits.size() * 4)}});
    };
    fixed("identifier", hexadecimal_identifier(command.identifier).substr(2));
    if (any) {
        entries.leaf("ArgumentRefEntry", {{"argumentRef", length_place.name}});
    } else {
        Octets length(sizeof(Request_Frame::announced));
        put_little_endian(length.data(), static_cast<unsigned short>(wire_bytes(command.request)));
        fixed("length", json::hexadecimal(length));
    }
    for (const Place& place : places) {
        if (place.name.empty())
            fixed("unused", json::hexadecimal(Octets(place.size)));
        else
            entries.leaf("ArgumentRefEntry", {{"argumentRef", plain_name(place)}});
    }
}

}

std::string xtce()
{
    std::vector<Place> parameters{crc_place};
    std::vector<Place> arguments{length_place};
    for (const Described_Command& command : described_commands()) {
        const auto response = places_of(command, command.response);
        const auto request = places_of(command, command.request);
        parameters.insert(parameters.end(), response.begin(), response.end());
        arguments.insert(arguments.end(), request.begin(), request.end());
    }

    std::ostringstream out;
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    {
        const Element root(out, "SpaceSystem",
                           {{"xmlns", "http://www.omg.org/spec/XTCE/20180204"},
                            {"name", "ZAVRA_100"},
                            {"shortDescription", "ZAVRA-100 attitude determination and control unit, I2C frames"}});
        {
            const Element telemetry(root, "TelemetryMetaData");
            write_types(telemetry, "Parameter", parameters);
        }
        {
            const Element commands(root, "CommandMetaData");
            write_types(commands, "Argument", arguments);
            const Element set(commands, "MetaCommandSet");
            for (const Described_Command& command : described_commands())
                write_request(set, command);
        }
        for (const Described_Command& command : described_commands())
            if (!command.response.empty())
                write_response(root, command);
    }
    return out.str();
}

}
