#pragma once

#include "../../protocol/command.h"

#include <functional>
#include <map>
#include <span>
#include <stdexcept>
#include <tuple>
#include <utility>
#include <vector>

namespace zavra::simulator
{

/// Thrown by a command's action when it will not do what it was asked.
class Refused : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// What the simulated unit does for each command.
class Command_Table
{
public:
    using Octets = std::vector<unsigned char>;

    enum class Status { done, unknown_command, wrong_length, refused };

    struct Outcome
    {
        Status status;
        /// The response's payload. The two parameter getters of the single-axis controllers share an identifier and a
        /// request; the unit has both replies ready and the length of the read tells which is wanted.
        std::vector<Octets> replies;
    };

    /// The action takes the command's decoded arguments and returns its result.
    template <class Result, class... Argument, class Action>
    void on(const Command<Result(Argument...)>& command, Action action)
    {
        using This = Command<Result(Argument...)>;
        on_bytes(command.identifier, This::request_size, [action](std::span<const unsigned char> payload) {
            auto arguments = unpack<typename This::Arguments>(payload.data());
            Octets reply(This::response_size);
            if constexpr (This::has_response) {
                const Result result = std::apply(action, arguments);
                if constexpr (is_tuple<Result>)
                    std::apply([&](const auto&... value) { pack(reply.data(), value...); }, result);
                else
                    pack(reply.data(), result);
            } else {
                std::apply(action, arguments);
            }
            return reply;
        });
    }

    /// For a setter and its getter, which write and read the same value.
    template <class Value>
    void keep(const Command<void(Value)>& set, const Command<Value()>& get, Value& kept)
    {
        on(set, [&kept](const Value& value) { kept = value; });
        on(get, [&kept] { return kept; });
    }

    using Bytes_Action = std::function<Octets(std::span<const unsigned char>)>;
    static constexpr std::size_t any_size = static_cast<std::size_t>(-1);

    void on_bytes(unsigned short identifier, std::size_t request_size, Bytes_Action action);

    Outcome execute(unsigned short identifier, std::span<const unsigned char> payload) const;

private:
    struct Entry
    {
        std::size_t request_size;
        Bytes_Action action;
    };

    std::multimap<unsigned short, Entry> entries_;
};

}
