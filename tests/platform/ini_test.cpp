#include "tests/support/temporary_directory.h"

#include <VELM_INIPARSER.h>

#include <iniparser/iniparser.h>

using namespace zavra::test;

template <class Action>
static std::string failure(Action action)
{
    return message_of<VELM_INIPARSER_Exception>(action);
}

template <class T>
static std::string convert(VELM_INIPARSER& ini, const std::string& key)
{
    T value = 77;
    const bool found = ini.get_value(key, &value) != 0;
    return (found ? "" : "refused ") + std::to_string(value);
}

TEST(Ini, Converts_Whole_Values_In_Range_And_Leaves_The_Rest_Alone)
{
    const std::string no = "refused 77", no_float = "refused 77.000000";
    const std::array<std::string, 5> cases[] = {
        {"  12  ; comment", "12", "12", "12", "12.000000"},
        {"256", no, "256", "256", "256.000000"},
        {"4294967296", no, no, "4294967296", "4294967296.000000"},
        {"18446744073709551615", no, no, "18446744073709551615", "18446744073709551616.000000"},
        {"-1", no, no, no, "-1.000000"},
        {"+5", no, no, no, "5.000000"},
        {"-2.5e-1", no, no, no, "-0.250000"},
        {"1e39", no, no, no, no_float},
        {"nan", no, no, no, no_float},
        {"+-5", no, no, no, no_float},
        {"0x10", no, no, no, no_float},
        {"1.5f", no, no, no, no_float},
        {"\" 5\"", no, no, no, no_float},
        {"", no, no, no, no_float},
    };
    Temporary_Directory directory;
    VELM_INIPARSER ini;
    for (const auto& [text, byte, word, long_word, real] : cases) {
        SCOPED_TRACE(text);
        ini.load_dict(directory.file("values.ini", "[S]\nKey = " + text + "\n").c_str());
        EXPECT_EQ(convert<unsigned char>(ini, "s:key"), byte);
        EXPECT_EQ(convert<unsigned int>(ini, "S:KEY"), word);
        EXPECT_EQ(convert<unsigned long long>(ini, "S:Key"), long_word);
        EXPECT_EQ(convert<float>(ini, "s:Key"), real);
    }
    EXPECT_EQ(convert<float>(ini, "s:other"), no_float);
    EXPECT_EQ(convert<float>(ini, "s"), no_float);
}

TEST(Ini, Counts_Keys_And_Prints_What_Was_Loaded_Last)
{
    Temporary_Directory directory;
    VELM_INIPARSER ini;
    ini.load_dict(directory.file("first.ini", "[old]\na = 1\n").c_str());
    ini.load_dict(directory.file("second.ini", "[Gyro0]\nA = 1\nb = 2\n[gyro01]\nc = 3\n[empty]\n").c_str());
    EXPECT_EQ(ini.get_number_of_section_keys("gyro0"), 2);
    EXPECT_EQ(ini.get_number_of_section_keys("GYRO01"), 1);
    EXPECT_EQ(ini.get_number_of_section_keys("empty"), 0);
    EXPECT_EQ(ini.get_number_of_section_keys("old"), 0);

    const std::string printed = directory.path + "/dump.ini";
    std::FILE* stream = std::fopen(printed.c_str(), "w");
    ini.dump(stream);
    std::fclose(stream);
    ini.load_dict(printed.c_str());
    EXPECT_EQ(ini.get_number_of_section_keys("gyro0"), 2);
    EXPECT_EQ(convert<unsigned int>(ini, "gyro01:c"), "3");

    std::FILE* full = std::fopen("/dev/full", "w");
    EXPECT_THAT(failure([&] { ini.dump(full); }), HasSubstr("No space left on device"));
    std::fclose(full);
}

TEST(Ini, Warns_Of_Sections_And_Keys_That_Merge)
{
    Temporary_Directory directory;
    const std::string path =
        directory.file("twice.ini", "[S]\na = 1 ; [s]\nA= \\\n2\n\n[T]\na = 3\n#[s]\n [s] \nb = 4\n");
    const std::string begin = "\033[33mWARNING: INI file " + path + ", line ", end = "\033[0m\n";
    VELM_INIPARSER ini;
    ::setenv("VELM_DEBUG", "4", 1);
    testing::internal::CaptureStderr();
    ini.load_dict(path.c_str());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              begin + "4: key s:a stands there more than once, the last value counts" + end + begin +
                  "9: section [s] stands there more than once" + end);
    EXPECT_EQ(ini.get_number_of_section_keys("s"), 2);
    EXPECT_EQ(convert<unsigned int>(ini, "s:a"), "2");
}

static int complaints = 0;

static int complain(const char*, ...)
{
    return ++complaints;
}

TEST(Ini, Leaves_The_Applications_Own_Use_Of_The_Library_Alone)
{
    Temporary_Directory directory;
    VELM_INIPARSER ini;
    iniparser_set_error_callback(complain);
    EXPECT_THAT(failure([&] { ini.load_dict(directory.file("bad.ini", "bad\n").c_str()); }), HasSubstr("syntax error"));
    EXPECT_EQ(complaints, 0);
    EXPECT_EQ(iniparser_load((directory.path + "/missing.ini").c_str()), nullptr);
    EXPECT_EQ(complaints, 1);
    iniparser_set_error_callback(nullptr);
}

TEST(Ini, Says_Which_File_It_Cannot_Load_And_Why)
{
    Temporary_Directory directory;
    const std::pair<std::string, std::string> cases[] = {
        {directory.path + "/missing.ini", "No such file or directory"},
        {directory.path, "Is a directory"},
        {directory.file("bad.ini", "[s]\na = 1\nno value here\n"), "(3): -> no value here)"},
        {directory.file("long.ini", "[s]\na = " + std::string(2000, '1') + "\n"), "input line too long"},
    };
    VELM_INIPARSER ini;
    for (const auto& [path, reason] : cases) {
        SCOPED_TRACE(path);
        ini.load_dict(directory.file("good.ini", "[s]\na = 1\n").c_str());
        testing::internal::CaptureStderr();
        EXPECT_THAT(failure([&, &file = path] { ini.load_dict(file.c_str()); }),
                    AllOf(HasSubstr(path), HasSubstr(reason)));
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        EXPECT_EQ(failure([&] { ini.get_number_of_section_keys("s"); }), "No INI file is loaded");
    }
    ini.free_dict();
    EXPECT_EQ(failure([&] { ini.dump(stdout); }), "No INI file is loaded");
    EXPECT_EQ(failure([&] { convert<float>(ini, "s:a"); }), "No INI file is loaded");
    EXPECT_NE(failure([&] { ini.load_dict(nullptr); }), "nothing was thrown");
}
