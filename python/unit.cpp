#include "unit.h"

#include <VELM_ZAVRA_CAUSE.h>
#include <VELM_ZAVRA_REGISTER_MAP.h>

#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include <cstdlib>
#include <mutex>
#include <optional>

namespace zavra::python
{

namespace
{

/// Says in the environment where buses are while one is opened.
class Bus_Directory
{
public:
    explicit Bus_Directory(const std::string& directory)
    {
        if (directory.empty())
            return;
        if (const char* const value = std::getenv(name))
            before_ = value;
        changed_ = true;
        ::setenv(name, directory.c_str(), 1);
    }
    ~Bus_Directory()
    {
        if (changed_ && before_)
            ::setenv(name, before_->c_str(), 1);
        else if (changed_)
            ::unsetenv(name);
    }
    Bus_Directory(const Bus_Directory&) = delete;
    Bus_Directory& operator=(const Bus_Directory&) = delete;

    static std::filesystem::path path()
    {
        const char* const directory = std::getenv(name);
        return directory == nullptr ? "/dev" : directory;
    }

private:
    static constexpr const char* name = "VELM_I2C_BUS_DIR";
    static inline std::mutex mutex_; // the environment is everybody's
    std::lock_guard<std::mutex> guard_{mutex_};
    bool changed_ = false;
    std::optional<std::string> before_;
};

const char* exception_name(velm_zavra::Cause::Kind kind)
{
    switch (kind) {
    case velm_zavra::Cause::bus:
        return "BusError";
    case velm_zavra::Cause::not_acknowledged:
        return "NotAcknowledged";
    case velm_zavra::Cause::timeout:
        return "BusTimeout";
    case velm_zavra::Cause::damaged_reply:
        return "DamagedReply";
    case velm_zavra::Cause::refused_argument:
        return "RefusedArgument";
    case velm_zavra::Cause::file:
        return "FileError";
    case velm_zavra::Cause::other:
        break;
    }
    return "Error";
}

void raise(const std::exception& error)
{
    const velm_zavra::Cause cause = velm_zavra::cause(error);
    const py::object type = py::module_::import("velm_zavra._errors").attr(exception_name(cause.kind));
    const py::object exception = type(latin_1(error.what(), std::string(error.what()).size() + 1));
    exception.attr("error_number") = cause.error_number;
    PyErr_SetObject(type.ptr(), exception.ptr());
}

}

Unit::Unit(unsigned int address, const std::string& bus, const std::string& ini, const std::string& directory)
    : address_(address),
      bus_(bus)
{
    const py::gil_scoped_release released;
    {
        const Bus_Directory place(directory);
        connection_ = std::make_shared<Connection>(address, bus);
        connection_->time = Simulated_Time::of_bus(Bus_Directory::path() / bus);
    }
    if (ini.empty())
        return;
    const Simulated_Time::Scope waits(connection_->time.get());
    connection_->api->Initialize_Device(ini);
}

std::shared_ptr<Unit::Connection> Unit::connected() const
{
    if (!connection_) {
        PyErr_SetString(py::module_::import("velm_zavra._errors").attr("NotConnected").ptr(),
                        (repr() + " has been disconnected").c_str());
        throw py::error_already_set();
    }
    return connection_;
}

void Unit::disconnect()
{
    const std::shared_ptr<Connection> connection = std::move(connection_);
    if (!connection)
        return;
    const py::gil_scoped_release released;
    const auto turn = connection->api.lock();
}

std::string Unit::repr() const
{
    return "Unit(address=" + std::to_string(address_) + ", bus='" + bus_ + "')";
}

Unit_Class::Unit_Class(py::module_& module)
    : type_(
          module, "Unit",
          "One unit at an I2C address of a bus.\n\nAn operation blocks its thread while the unit works, for at least "
          "100 ms; other threads run meanwhile. A failure of the unit or of the bus raises an Error; the object stays "
          "usable, and nothing is rolled back on the unit. Threads that share a Unit take turns, call by call. A with "
          "block disconnects at its end.")
{
    py::setattr(type_, "__module__", py::str("velm_zavra"));
    type_.def(
        py::init([](unsigned int address, const std::string& bus, const std::optional<std::filesystem::path>& ini) {
            return std::make_unique<Unit>(address, bus, ini ? ini->string() : std::string());
        }),
        "address: 7-bit address of the unit\nbus: name of the bus, looked for in /dev or the directory that "
        "VELM_I2C_BUS_DIR names\nini: file that the sensors are configured from; None leaves them as they are\n"
        "Raises velm_zavra.Error when the bus cannot be opened, or the file has not what it should.",
        py::arg("address") = 10U, py::arg("bus") = "i2c-0", py::arg("ini") = py::none());
    const auto connect = [](const py::object&, const std::filesystem::path& directory, const std::string& bus,
                            unsigned int address, const std::optional<std::filesystem::path>& ini) {
        return std::make_unique<Unit>(address, bus, ini ? ini->string() : std::string(), directory.string());
    };
    module.def("connect", connect, py::keep_alive<0, 1>()); // the bench is there as long as the unit
    type_.def("disconnect", &Unit::disconnect,
              "Closes the connection, when a call that lasts is over. May be repeated.");
    type_.def_property_readonly("connected", &Unit::is_connected, "Whether the unit has not been disconnected.");
    type_.def("__enter__", [](const py::object& self) { return self; });
    type_.def("__exit__", [](Unit& unit, const py::args&) { unit.disconnect(); });
    type_.def("__repr__", &Unit::repr);
}

void Unit_Class::native_command(const char* name, const char* doc)
{
    const auto run = [](const Unit& unit, const py::bytes& data) {
        std::string bytes = data;
        unit.call([&](VELM_ZAVRA_API& api) {
            api.Send_Startracker_Native_Command(reinterpret_cast<unsigned char*>(bytes.data()),
                                                static_cast<unsigned int>(bytes.size()));
        });
    };
    type_.def(name, run, doc, py::arg("data"));
}

void Unit_Class::native_reply(const char* name, const char* doc)
{
    const auto run = [](const Unit& unit) {
        unsigned char byte = 0;
        unit.call([&](VELM_ZAVRA_API& api) { api.Read_Startracker_Native_Reply(&byte, 1); });
        return static_cast<unsigned int>(byte);
    };
    type_.def(name, run, doc);
}

void Unit_Class::tle_file(const char* name, const char* doc)
{
    const auto run = [](const Unit& unit, const std::filesystem::path& file) {
        std::string path = file.string();
        return unit.call([&](VELM_ZAVRA_API& api) { return api.parse_TLE_file(path.data()); });
    };
    type_.def(name, run, doc, py::arg("file_name"));
}

void add_failures()
{
    py::register_local_exception_translator([](std::exception_ptr failure) {
        try {
            std::rethrow_exception(failure);
        } catch (const VELM_ZAVRA_API_Exception& error) {
            raise(error);
        } catch (const VELM_INIPARSER_Exception& error) {
            raise(error);
        }
    });
}

void add_register_map(py::module_& module)
{
    using Map = VELM_ZAVRA_REGISTER_MAP;
    py::class_<Map> type(module, "RegisterMap",
                         "The names that a unit's documentation gives to the bits of its registers. Without a file, "
                         "bits are bit_NN but for the two command errors.");
    py::setattr(type, "__module__", py::str("velm_zavra"));
    type.def(py::init<>());
    type.def(py::init([](const std::filesystem::path& file) { return std::make_unique<Map>(file.string()); }),
             py::arg("map_file"), "map_file: INI file with a section per register and a key per bit");
    type.def("decode", py::overload_cast<VELM_ZAVRA_API_REGISTERS, unsigned int>(&Map::Decode, py::const_),
             "decode(which, value) -> Register\n\nA register's word as named flags.", py::arg("which"),
             py::arg("value"));
    type.def("decode", py::overload_cast<const VELM_ZAVRA_API_REGISTER&>(&Map::Decode, py::const_),
             "decode(reading) -> Register\n\nA reading with the names of this map.", py::arg("reading"));
    type.def("encode", &Map::Encode, "encode(which, flags) -> int\n\nThe word in which the named flags are set.",
             py::arg("which"), py::arg("flags"));
    type.def("is_set", &Map::Is_Set, "is_set(reading, flag) -> bool\n\nWhether a flag is set in a reading.",
             py::arg("reading"), py::arg("flag"));
}

}
