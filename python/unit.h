#pragma once

#include "record.h"
#include "waits.h"

#include <VELM_ZAVRA_API.h>
#include <VELM_ZAVRA_SHARED.h>

#include <memory>
#include <string>

/// The class Unit of Python.
namespace zavra::python
{

/// A unit that is connected or, after disconnect(), is not any more. Threads of Python may share it: calls take turns.
class Unit
{
public:
    /// @param directory  of the bus; empty: where the environment says
    Unit(unsigned int address, const std::string& bus, const std::string& ini, const std::string& directory = {});

    /// Runs an operation. Other threads of Python run meanwhile, also while it waits for its turn.
    template <class Action>
    auto call(Action&& action) const
    {
        const std::shared_ptr<Connection> connection = connected();
        const py::gil_scoped_release released;
        const auto turn = connection->api.lock();
        const Simulated_Time::Scope waits(connection->time.get());
        return action(*turn);
    }

    /// Waits until the call that lasts has come to its end.
    void disconnect();

    bool is_connected() const { return connection_ != nullptr; }
    std::string repr() const;

private:
    struct Connection
    {
        Connection(unsigned int address, const std::string& bus) : api(address, bus, std::string(), false) {}

        velm_zavra::Shared<> api;
        std::shared_ptr<Simulated_Time> time; ///< of a unit that is simulated in this process
    };

    std::shared_ptr<Connection> connected() const;

    unsigned int address_;
    std::string bus_;
    std::shared_ptr<Connection> connection_;
};

/// Times of an operation, which people give as numbers or as datetime has them.
template <Role role>
struct Time
{
    unsigned long long msec;
    operator unsigned long long() const { return msec; }
};

using Epoch = Time<Role::epoch>;
using Interval = Time<Role::interval>;

/// What the operations are added to.
class Unit_Class
{
public:
    explicit Unit_Class(py::module_& module);

    /// @tparam Argument  what Python's arguments are taken as
    template <class... Argument, class Result, class... Parameter, class... Name>
    void add(const char* name, Result (VELM_ZAVRA_API::*operation)(Parameter...), const char* doc, const Name&... names)
    {
        const auto run = [operation](const Unit& unit, const Argument&... arguments) {
            return unit.call([&](VELM_ZAVRA_API& api) { return (api.*operation)(arguments...); });
        };
        type_.def(name, run, py::doc(doc), py::arg(names)...);
    }

    // Those that have pointers.
    void native_command(const char* name, const char* doc);
    void native_reply(const char* name, const char* doc);
    void tle_file(const char* name, const char* doc);

private:
    py::class_<Unit> type_;
};

void add_operations_0(Unit_Class& unit);
void add_operations_1(Unit_Class& unit);
void add_operations_2(Unit_Class& unit);

/// Failures of the library as Python's exceptions.
void add_failures();

void add_register_map(py::module_& module);

}

namespace pybind11::detail
{

template <zavra::python::Role role>
struct type_caster<zavra::python::Time<role>>
{
    PYBIND11_TYPE_CASTER(zavra::python::Time<role>, const_name("int"));

    bool load(handle from, bool)
    {
        value.msec = zavra::python::milliseconds(from, role);
        return true;
    }
};

}
