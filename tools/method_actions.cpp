#include "arguments.h"
#include "commands.h"
#include "enumerators.h"
#include "failure.h"

namespace zavra::tools
{

namespace
{

Arguments gather(const Method& method, const Values& values)
{
    Arguments arguments(method.arguments, values.force);
    if (values.json_file)
        arguments.take_json(read_json_file(*values.json_file));
    arguments.take_words(values.words);
    return arguments;
}

/// The device layer's refusals do not say what would have been right.
Answer call(const Method& method, Unit& unit, const Json& arguments)
try {
    return {method.results, unit.call(method, arguments)};
} catch (const ZAVRA_100_Exception& error) {
    if (is_refusal(error))
        throw Usage_Error(error.what() + known_ranges(method.arguments));
    throw;
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
    if (!given.complete() && has_settings && !keep)
        throw Usage_Error("a dry run does not ask the unit for what is not given: " + given.missing());
    if (given.complete() || !has_settings)
        return {[setter, arguments = given.json()](Unit& unit) { return call(*setter, unit, arguments); }, false};
    return {[setter, getter, given](Unit& unit) {
                // The getter's arguments, such as an index, are among the setter's.
                Arguments of_getter(getter->arguments);
                of_getter.complete_with(given.partial());
                Arguments arguments = given;
                arguments.complete_with(call(*getter, unit, of_getter.json()).value);
                return call(*setter, unit, arguments.json());
            },
            false};
}

Device_Action call_action(const Method& method, const Values& values)
{
    return {[&method, arguments = gather(method, values).json()](Unit& unit) { return call(method, unit, arguments); },
            !method.results.empty()};
}

}
