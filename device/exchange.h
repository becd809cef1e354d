#pragma once

#include "../protocol/command.h"
#include "ZAVRA_100.h"
#include "failure.h"

#include <type_traits>

/// What a device method is made of: send() for a command without a response, ask() for one with a response.
namespace zavra
{

/// Sends a request as it stands.
void send_bytes(ZAVRA_100& device, unsigned short identifier, const char* action, unsigned char* payload,
                unsigned int length);

/// Sends a request as it stands and reads the response to it.
void ask_bytes(ZAVRA_100& device, unsigned short identifier, const char* action, unsigned char* payload,
               unsigned int length, unsigned char* response, unsigned int response_length);

/// A request's payload on the stack; a command without arguments has no buffer at all.
template <std::size_t size>
struct Payload
{
    unsigned char bytes[size] = {};
    unsigned char* data() { return bytes; }
};

template <>
struct Payload<0>
{
    static unsigned char* data() { return nullptr; }
};

template <class... Argument>
void send(ZAVRA_100& device, const Command<void(Argument...)>& command,
          const std::type_identity_t<Argument>&... arguments)
{
    constexpr auto size = Command<void(Argument...)>::request_size;
    static_assert(size <= max_payload_bytes);
    Payload<size> payload;
    pack(payload.data(), arguments...);
    send_bytes(device, command.identifier, command.action, payload.data(), size);
}

/// The decoded response; nothing is returned before all of it has arrived and been checked.
template <class Result, class... Argument>
Result ask(ZAVRA_100& device, const Command<Result(Argument...)>& command,
           const std::type_identity_t<Argument>&... arguments)
{
    using This = Command<Result(Argument...)>;
    static_assert(This::request_size <= max_payload_bytes && This::response_size <= max_payload_bytes);
    Payload<This::request_size> payload;
    pack(payload.data(), arguments...);
    unsigned char response[This::response_size];
    ask_bytes(device, command.identifier, command.action, payload.data(), This::request_size, response,
              This::response_size);
    return unpack<Result>(response);
}

}
