#include "arguments.h"
#include "commands.h"
#include "failure.h"

namespace zavra::tools
{

namespace
{

Arguments gather(const Method& method, const Values& values)
{
    Arguments arguments(method.arguments);
    if (values.json_file)
        arguments.take_json(read_json_file(*values.json_file));
    arguments.take_words(values.words);
    return arguments;
}

/// Values that do not fit are the caller's fault; the device layer is not asked then.
Answer call(const Method& method, ZAVRA_100& device, const Json& arguments)
try {
    return {method.results, method.call(device, arguments)};
} catch (const std::invalid_argument& error) {
    throw Usage_Error(error.what());
}

const Method* optional_method(const char* name)
{
    return name == nullptr ? nullptr : &method_named(name);
}

}

Device_Action everyday_action(const Everyday& command, const Values& values, bool keep)
{
    const Method* const getter = optional_method(command.getter);
    const Method* const setter = optional_method(command.setter);
    const bool sets =
        setter != nullptr && (getter == nullptr || values.json_file || values.words.size() > getter->arguments.size());
    if (!sets)
        return call_action(*getter, values);

    // Only parameters are kept: a measurement is not what was set.
    const bool has_settings = getter != nullptr && setter->name.ends_with("_Parameters");
    const Arguments given = gather(*setter, values);
    if (given.complete() || !has_settings || !keep)
        return {[setter, arguments = given.json()](ZAVRA_100& device) { return call(*setter, device, arguments); },
                false};
    return {[setter, getter, given](ZAVRA_100& device) {
                // The getter's arguments, such as an index, are among the setter's.
                Arguments of_getter(getter->arguments);
                of_getter.complete_with(given.partial());
                Arguments arguments = given;
                arguments.complete_with(call(*getter, device, of_getter.json()).value);
                return call(*setter, device, arguments.json());
            },
            false};
}

Device_Action call_action(const Method& method, const Values& values)
{
    return {[&method, arguments = gather(method, values).json()](ZAVRA_100& device) {
                return call(method, device, arguments);
            },
            !method.results.empty()};
}

}
