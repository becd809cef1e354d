#include "cases.h"

namespace zavra::test
{

/// The failure of an operation, in the words of both layers.
static std::string failure(const Case& each, const std::string& reason)
{
    std::string device_words = each.device_words;
    if (device_words.empty())
        for (const char c : each.words)
            device_words += device_words.empty() || device_words.back() == ' ' ? static_cast<char>(std::toupper(c)) : c;
    return "Failed to " + each.words + " (Failed to " + device_words + " (" + reason + "))";
}

std::unique_ptr<Api> Operation_Test::quietly_constructed_api()
{
    testing::internal::CaptureStdout();
    auto api = std::make_unique<Api>();
    testing::internal::GetCapturedStdout();
    return api;
}

void Operation_Test::check(const std::vector<Case>& cases)
{
    for (const Case& each : cases) {
        SCOPED_TRACE(each.words + " " + each.request);
        Lines events{"write " + hexadecimal(with_crc(octets(each.request))), "sleep 100000"};
        if (!each.response.empty())
            events.push_back("read " + std::to_string(each.response.hexadecimal().size() / 2 + 1));
        std::vector<testing::Matcher<std::string>> printed;
        for (const std::string& line : each.printed_before + each.printed_after)
            if (line.ends_with('*'))
                printed.emplace_back(StartsWith(line.substr(0, line.size() - 1)));
            else
                printed.emplace_back(line);

        const auto succeed = [&](auto& object, const auto& call) {
            platform = {};
            platform.reply(each.response.hexadecimal());
            EXPECT_NO_THROW(call(object, each.response));
            EXPECT_EQ(platform.events, events);
            EXPECT_THAT(platform.dumped(), testing::ElementsAreArray(printed));
        };
        succeed(api, each.call.api);
        if (each.call.device)
            succeed(device, each.call.device);

        platform = {};
        platform.write_failure = "no bus";
        const std::string set = "Failed to use Generic-SET for ZAVRA (no bus)";
        const std::string get = "Failed to use Generic-GET for ZAVRA: Generic-SET command failed (" + set + ")";
        EXPECT_EQ(message_of<Api_Failure>([&] { each.call.api(api, each.response); }),
                  failure(each, each.response.empty() ? set : get));
        EXPECT_EQ(platform.events, Lines{}) << "a failed write is not followed by a sleep";
        EXPECT_EQ(platform.dumped(), each.printed_before);
    }
}

void Operation_Test::check_refused(const std::vector<Case>& cases, const std::string& reason)
{
    platform = {};
    for (const Case& each : cases)
        EXPECT_EQ(message_of<Api_Failure>([&] { each.call.api(api, each.response); }), failure(each, reason));
    EXPECT_TRUE(platform.events.empty() && platform.debug.empty());
}

Lines operator+(Lines a, const Lines& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

Lines dump(const std::string& title, const std::string& prefix, const std::string& labels, unsigned int first)
{
    std::deque<std::string> left;
    std::istringstream words(labels);
    std::copy(std::istream_iterator<std::string>(words), {}, std::back_inserter(left));
    Lines lines(title.empty() ? 0 : 1, title);
    while (!left.empty()) {
        std::string label = left.front();
        left.pop_front();
        if (const std::size_t open = label.find('{'); open != std::string::npos) {
            const std::string letters = label.substr(open + 1, label.find('}') - open - 1);
            for (std::size_t i = letters.size(); i-- > 0;)
                left.push_front(std::string(label).replace(open, letters.size() + 2, 1, letters[i]));
            continue;
        }
        std::ostringstream value;
        if (const std::size_t own = label.find_first_of("=:"); own != std::string::npos)
            value << (label[own] == '=' ? ": dec = " : ": ") << label.substr(own + 1);
        else if (label.back() == '#')
            value << ": hex = 0x" << std::setfill('0') << std::setw(8) << std::hex << first;
        else if (label.back() == '*')
            value << ": dec = " << static_cast<char>(first);
        else
            value << ": dec = " << first;
        lines.push_back(prefix + label.substr(0, label.find_first_of("=:#*")) + value.str());
        ++first;
    }
    return lines;
}

}
