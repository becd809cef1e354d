#include "module.h"

#include "../catalogue/commands.h"
#include "../protocol/frame.h"
#include "../tools/decode.h"

#include <pybind11/stl.h>

#include <sstream>
#include <string>

namespace py = pybind11;

namespace zavra::python
{

namespace
{

const char* name_of(Item::Kind kind)
{
    switch (kind) {
    case Item::Kind::unsigned_integer:
        return "unsigned";
    case Item::Kind::signed_integer:
        return "signed";
    case Item::Kind::real:
        return "real";
    case Item::Kind::text:
        return "text";
    case Item::Kind::bytes:
        return "bytes";
    case Item::Kind::skipped:
        return "skipped";
    case Item::Kind::open:
        return "open";
    case Item::Kind::close:
        break;
    }
    return "close";
}

/// Name, unit, kind, size in bytes, count: records lie between "open" and "close".
py::list items(Items items)
{
    py::list list;
    for (const Item& item : items)
        list.append(py::make_tuple(json::key(item), item.unit, name_of(item.kind), item.size, item.count));
    return list;
}

const Described_Command& command_named(const std::string& method)
{
    const Described_Command* const command = find_command(method);
    if (command == nullptr)
        throw py::key_error("there is no command \"" + method + '"');
    return *command;
}

std::span<const unsigned char> octets(const std::string& bytes)
{
    return {reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()};
}

py::bytes as_bytes(const Octets& octets)
{
    return {reinterpret_cast<const char*>(octets.data()), octets.size()};
}

py::bytes request_frame(unsigned short identifier, const py::bytes& payload)
{
    const std::string data = payload;
    if (data.size() > max_payload_bytes)
        throw py::value_error("more than " + std::to_string(max_payload_bytes) + " bytes of payload");
    Octets frame(frame_header_bytes);
    put(frame.data(), identifier);
    put_little_endian(frame.data() + sizeof identifier, static_cast<unsigned short>(data.size()));
    frame.insert(frame.end(), data.begin(), data.end());
    frame.push_back(crc8(frame));
    return as_bytes(frame);
}

py::list commands()
{
    py::list list;
    for (const Described_Command& command : described_commands())
        list.append(py::make_tuple(command.method, command.identifier, command.action, items(command.request),
                                   items(command.response)));
    return list;
}

}

void add_protocol(py::module_& module)
{
    module.def("commands", &commands);
    module.def("request_frame", &request_frame);
    module.def("crc8", [](const std::string& bytes) { return crc8(octets(bytes)); });
    module.def("encode_request", [](const std::string& method, const std::string& arguments) {
        return as_bytes(command_named(method).encode_request(Json::parse(arguments)));
    });
    module.def("decode_request", [](const std::string& method, const py::bytes& payload) {
        const std::string bytes = payload;
        return command_named(method).decode_request(octets(bytes)).dump();
    });
    module.def("decode_response", [](const std::string& method, const py::bytes& payload) {
        const std::string bytes = payload;
        return command_named(method).decode_response(octets(bytes)).dump();
    });
    module.def("explain", [](const std::string& lines) {
        std::istringstream in(lines);
        std::ostringstream out;
        tools::decode(in, out, true);
        return out.str();
    });
}

}
