#pragma once

#include "item.h"
#include "json.h"

#include "../protocol/frame.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zavra
{

/// A command of the unit without its types.
struct Described_Command
{
    unsigned short identifier;
    const char* method; ///< the device method that sends it
    const char* action; ///< the action words of its failure message
    Items request;
    Items response; ///< empty for a command without one

    /// The arguments or results in a payload; an empty object where there are none.
    /// @throws std::invalid_argument  when the payload has another size
    Json decode_request(std::span<const unsigned char> payload) const;
    Json decode_response(std::span<const unsigned char> payload) const;

    /// The payload of a request made of its arguments by name.
    /// @throws std::invalid_argument  naming the argument or field that is missing, unknown or out of range
    Octets encode_request(const Json& arguments) const;
};

/// Every command of the unit.
std::span<const Described_Command> described_commands();

/// The command of a device method's name, or null.
const Described_Command* find_command(std::string_view method);

/// The commands that a request may be: some share an identifier and are told apart by the length of the request, some
/// only by that of the response.
std::vector<const Described_Command*> find_requests(unsigned short identifier, std::size_t request_size);

/// The same for a frame; none when it is no request.
std::vector<const Described_Command*> find_requests(const Request_Frame& frame);

/// Their methods with "or" between them.
std::string names_of(std::span<const Described_Command* const> commands);

}
