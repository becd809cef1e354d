#pragma once

#include "ZAVRA_100.h"

#include <cerrno>
#include <exception>
#include <string>
#include <system_error>
#include <type_traits>

namespace zavra
{

/// "Failed to " + action words + " (" + reason + ")".
inline std::string failure(const char* action_words, const std::string& reason)
{
    return std::string("Failed to ") + action_words + " (" + reason + ")";
}

/// Throws with the failure that is being handled nested inside.
template <class Exception>
[[noreturn, gnu::noinline]] void fail(const std::string& message)
{
    std::throw_with_nested(Exception(message));
}

/// Throws a failure that has no layer below: the code is nested inside, for velm_zavra::cause().
template <class Exception>
[[noreturn, gnu::noinline]] void fail(const std::string& message, int code)
{
    try {
        throw std::system_error(code, std::generic_category());
    } catch (const std::system_error&) {
        fail<Exception>(message);
    }
}

inline constexpr int refused = EINVAL; // these two codes are no file's
inline constexpr int damaged = EBADMSG;

/// Runs an action of one layer; a failure of the layer below becomes this layer's own.
template <class Inner, class Outer>
[[gnu::noinline]] void run_translated(const char* action_words, void (*run)(void*), void* action)
{
    try {
        run(action);
    } catch (const Inner& inner) {
        fail<Outer>(failure(action_words, inner.what()));
    }
}

/// There are as many actions as commands; what they share is in the function above, once.
template <class Inner, class Outer, class Action>
auto translate(const char* action_words, Action&& action)
{
    using Result = decltype(action());
    if constexpr (std::is_void_v<Result>) {
        const auto run = [](void* it) { (*static_cast<std::remove_reference_t<Action>*>(it))(); };
        run_translated<Inner, Outer>(action_words, run, &action);
    } else {
        Result result{};
        translate<Inner, Outer>(action_words, [&] { result = action(); });
        return result;
    }
}

/// What a device method does: a failure of the transport, or of the platform's bus, leaves as ZAVRA_100_Exception.
template <class Inner = ZAVRA_100_Exception, class Action>
auto attempt(const char* action_words, Action&& action)
{
    return translate<Inner, ZAVRA_100_Exception>(action_words, action);
}

/// Refuses an argument before anything is sent.
[[noreturn, gnu::noinline]] inline void reject(const char* action_words, const char* reason)
{
    fail<ZAVRA_100_Exception>(failure(action_words, reason), refused);
}

}
