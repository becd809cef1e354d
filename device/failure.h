#pragma once

#include "ZAVRA_100.h"

#include <string>

namespace zavra
{

/// "Failed to " + action words + " (" + reason + ")".
inline std::string failure(const char* action_words, const std::string& reason)
{
    return std::string("Failed to ") + action_words + " (" + reason + ")";
}

/// Runs an action of one layer; a failure of the layer below becomes this layer's own.
template <class Inner, class Outer, class Action>
decltype(auto) translate(const char* action_words, Action&& action)
{
    try {
        return action();
    } catch (const Inner& inner) {
        throw Outer(failure(action_words, inner.what()));
    }
}

/// What a device method does: a failure of the transport, or of the platform's bus, leaves as ZAVRA_100_Exception.
template <class Inner = ZAVRA_100_Exception, class Action>
decltype(auto) attempt(const char* action_words, Action&& action)
{
    return translate<Inner, ZAVRA_100_Exception>(action_words, action);
}

/// Refuses an argument before anything is sent.
[[noreturn]] inline void reject(const char* action_words, const char* reason)
{
    throw ZAVRA_100_Exception(failure(action_words, reason));
}

}
