#pragma once

#include "../device/ZAVRA_100_Exception.h"
#include "VELM_ZAVRA_API_Exception.h"

#include <VELM_I2C_DEV.h>
#include <VELM_INIPARSER.h>

#include <cerrno>
#include <exception>
#include <system_error>

/// @file
/// Why a call failed, for programs. Header only.

namespace velm_zavra
{

struct Cause
{
    enum Kind {
        bus,              ///< the bus cannot be opened, or a transfer failed in another way than the next two
        not_acknowledged, ///< nobody answers at the address, or who does is busy
        timeout,          ///< the bus did not come to an end with a transfer
        damaged_reply,    ///< ten replies with a wrong CRC
        refused_argument, ///< nothing was sent
        file,             ///< cannot be read, or has not the content that it should have
        other             ///< not a failure of this library
    };

    Kind kind;
    int error_number; ///< the system's errno for a bus or a file; 0 where nobody said
};

inline const char* to_string(Cause::Kind kind)
{
    switch (kind) {
    case Cause::bus:
        return "bus";
    case Cause::not_acknowledged:
        return "not acknowledged";
    case Cause::timeout:
        return "timeout";
    case Cause::damaged_reply:
        return "damaged reply";
    case Cause::refused_argument:
        return "refused argument";
    case Cause::file:
        return "file";
    case Cause::other:
        break;
    }
    return "other";
}

namespace detail
{

enum class Layer { none, library, bus, ini_parser };

/// What the code in a layer's innermost exception stands for; 0 where there is none.
inline Cause cause_in(Layer layer, int code)
{
    switch (layer) {
    case Layer::bus:
        return {code == ENXIO || code == EREMOTEIO ? Cause::not_acknowledged
                : code == ETIMEDOUT                ? Cause::timeout
                                                   : Cause::bus,
                code};
    case Layer::library:
        return {code == EINVAL    ? Cause::refused_argument
                : code == EBADMSG ? Cause::damaged_reply
                                  : Cause::file,
                code == EINVAL || code == EBADMSG ? 0 : code};
    case Layer::ini_parser:
        return {Cause::file, code};
    case Layer::none:
        break;
    }
    return {Cause::other, 0};
}

inline Cause cause(const std::exception& error, Layer layer)
{
    if (dynamic_cast<const VELM_I2C_DEV_Exception*>(&error) != nullptr) {
        layer = Layer::bus;
    } else if (dynamic_cast<const VELM_INIPARSER_Exception*>(&error) != nullptr) {
        layer = Layer::ini_parser;
    } else if (dynamic_cast<const VELM_ZAVRA_API_Exception*>(&error) != nullptr ||
               dynamic_cast<const ZAVRA_100_Exception*>(&error) != nullptr) {
        layer = Layer::library;
    } else if (const auto* reason = dynamic_cast<const std::system_error*>(&error)) {
        if (layer != Layer::none)
            return cause_in(layer, reason->code().value());
    }
    const auto* const around = dynamic_cast<const std::nested_exception*>(&error);
    if (around != nullptr && around->nested_ptr() != nullptr) {
        try {
            around->rethrow_nested();
        } catch (const std::exception& inner) {
            return cause(inner, layer);
        } catch (...) {
        }
    }
    return layer == Layer::library ? Cause{Cause::other, 0} : cause_in(layer, 0);
}

}

/// What is at the bottom of an exception that left VELM_ZAVRA_API, VELM_ZAVRA_REGISTER_MAP, ZAVRA_100 or a class of the
/// platform, also when an application nested it in exceptions of its own.
inline Cause cause(const std::exception& error)
{
    return detail::cause(error, detail::Layer::none);
}

}
