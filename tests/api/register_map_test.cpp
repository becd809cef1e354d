#include "tests/support/temporary_directory.h"

#include <VELM_ZAVRA_REGISTER_MAP.h>

using namespace zavra::test;

TEST(Register_Map, names_the_bits_that_a_file_lists_and_numbers_the_others)
{
    const Temporary_Directory directory;
    const VELM_ZAVRA_REGISTER_MAP map(directory.file("map.ini", "; our unit\r\n\n[system_error]\r\n  0=Bad_CRC\r\n"
                                                                "\t31 = out_of_power   # at last\n"
                                                                "[ sat_main ]\n07 = eclipse ; of the sun\n8 = bit_08\n"
                                                                "[system_error]\n2 = eclipse"));
    const auto all_set = map.Decode(VELM_ZAVRA_API_SYSTEM_ERROR_REGISTER, 0xFFFFFFFF);
    EXPECT_EQ(all_set.flags[0].name, "Bad_CRC");
    EXPECT_EQ(all_set.flags[1].name, "bit_01") << "the file alone decides";
    EXPECT_EQ(all_set.flags[2].name, "eclipse") << "a name is unique in its register only";
    EXPECT_EQ(all_set.flags[30].name, "bit_30");
    EXPECT_EQ(all_set.flags[31].name, "out_of_power");
    EXPECT_TRUE(all_set.flags[31].state);

    const auto known = VELM_ZAVRA_REGISTER_MAP().Decode(VELM_ZAVRA_API_SAT_MAIN_REGISTER, 1U << 7U | 1U << 31U);
    const auto named = map.Decode(known);
    EXPECT_EQ(named.which, VELM_ZAVRA_API_SAT_MAIN_REGISTER);
    EXPECT_EQ(named.value, 0x80000080U);
    EXPECT_EQ(named.flags[7].name, "eclipse");
    for (unsigned int bit = 0; bit < 32; ++bit)
        EXPECT_EQ(named.flags[bit].state, bit == 7 || bit == 31) << bit;
}

TEST(Register_Map, says_where_a_file_is_wrong)
{
    const Temporary_Directory directory;
    const std::string file = directory.path + "/map.ini";
    const std::string bit_5 = file + ", line 2, section [sat_main], key \"5\": ";
    const auto bad_key = [&](const std::string& key) {
        return file + ", line 2, section [sat_main], key \"" + key + "\": the key is not a bit number from 0 to 31";
    };
    const std::pair<const char*, std::string> cases[] = {
        {"[system_eror]", file + ", line 1, section [system_eror]: there is no such register"},
        {"\n[Sat_Main]", file + ", line 2, section [Sat_Main]: there is no such register"},
        {"[]\n0 = x", file + ", line 1, section []: there is no such register"},
        {"0 = x", file + ", line 1, key \"0\": the key stands before the first section"},
        {"[sat_main]\n32 = x", bad_key("32")},
        {"[sat_main]\n-1 = x", bad_key("-1")},
        {"[sat_main]\n4294967296 = x", bad_key("4294967296")},
        {"[sat_main]\n0x1 = x", bad_key("0x1")},
        {"[sat_main]\n = x", bad_key("")},
        {"[sat_main]\n5 =  ; none", bit_5 + "the name is empty"},
        {"[sat_main]\n5 = bit_06", bit_5 + "the name \"bit_06\" is that of bit 6"},
        {"[sat_main]\n5 = a b", bit_5 + "the name \"a b\" has other characters than letters, digits and underscores"},
        {"[sat_main]\n5 = x\n05 = y", file + ", line 3, section [sat_main], key \"05\": the bit has a name already"},
        {"[sat_main]\n5 = x\n6 = x", file + ", line 3, section [sat_main], key \"6\": the name \"x\" is that of bit 5"},
        {"[livelyhood]\n5 = x\n[dcdc_configuration]\n5 = x\n6 = x",
         file + ", line 5, section [dcdc_configuration], key \"6\": the name \"x\" is that of bit 5"},
        {"[sat_main", file + ", line 1: neither a section, a key with a name, nor a comment"},
    };
    const auto complaint_about = [](const std::string& path) {
        return message_of<VELM_ZAVRA_API_Exception>([&] { VELM_ZAVRA_REGISTER_MAP{path}; });
    };
    for (const auto& [content, complaint] : cases)
        EXPECT_EQ(complaint_about(directory.file("map.ini", content)),
                  "Failed to load register map (" + complaint + ")");
    EXPECT_EQ(complaint_about("/none"), "Failed to load register map (/none: No such file or directory)");
    EXPECT_EQ(complaint_about("/tmp"), "Failed to load register map (/tmp: the file cannot be read)");
    EXPECT_EQ(message_of<VELM_ZAVRA_API_Exception>(
                  [] { VELM_ZAVRA_REGISTER_MAP().Decode(static_cast<VELM_ZAVRA_API_REGISTERS>(11), 0); }),
              "Failed to decode register (unknown register)");
}

TEST(Register_Map, puts_words_together_and_tells_flags_by_name)
{
    const Temporary_Directory directory;
    const VELM_ZAVRA_REGISTER_MAP map(directory.file(
        "map.ini", "[dcdc_configuration]\n0 = wheels\n31 = star_tracker\n[hil_configuration]\n4 = gyros\n"
                   "[livelyhood]\n0 = alive\n[system_status]\n4 = ready\n"));
    const struct
    {
        VELM_ZAVRA_API_REGISTERS which;
        std::vector<std::string> flags;
        unsigned int word;
    } cases[] = {
        {VELM_ZAVRA_API_DCDC_CONFIGURATION, {"star_tracker", "wheels", "bit_07"}, 0x80000081},
        {VELM_ZAVRA_API_DCDC_CONFIGURATION, {}, 0},
        {VELM_ZAVRA_API_HIL_CONFIGURATION, {"gyros", "bit_04", "gyros"}, 0x10},
        {VELM_ZAVRA_API_LIVELYHOOD_REGISTER, {"alive", "bit_31"}, 0x80000001},
        {VELM_ZAVRA_API_SYSTEM_STATUS_REGISTER, {"ready"}, 0x10},
    };
    for (const auto& [which, flags, word] : cases) {
        EXPECT_EQ(map.Encode(which, flags), word);
        const auto reading = VELM_ZAVRA_REGISTER_MAP().Decode(which, word);
        for (const std::string& flag : flags)
            EXPECT_TRUE(map.Is_Set(reading, flag)) << flag;
        EXPECT_FALSE(map.Is_Set(reading, "bit_20"));
    }
    const VELM_ZAVRA_REGISTER_MAP copy = map;
    const auto hil = copy.Decode(VELM_ZAVRA_API_HIL_CONFIGURATION, 0x10);
    EXPECT_EQ(hil.name, "hil_configuration");
    EXPECT_EQ(hil.flags[4].name, "gyros");
    EXPECT_EQ(hil.flags[5].name, "bit_05");
    EXPECT_TRUE(hil.flags[4].state);
    EXPECT_EQ(copy.Decode(VELM_ZAVRA_API_SYSTEM_STATUS_REGISTER, 0).flags[4].name, "ready");

    EXPECT_EQ(message_of<VELM_ZAVRA_API_Exception>([&] { map.Encode(VELM_ZAVRA_API_HIL_CONFIGURATION, {"wheels"}); }),
              "Failed to encode register (hil_configuration has no flag \"wheels\")");
    EXPECT_EQ(message_of<VELM_ZAVRA_API_Exception>([&] { map.Encode(static_cast<VELM_ZAVRA_API_REGISTERS>(11), {}); }),
              "Failed to encode register (unknown register)");
    EXPECT_EQ(message_of<VELM_ZAVRA_API_Exception>([&] { map.Is_Set(hil, ""); }),
              "Failed to look at a register's flag (hil_configuration has no flag \"\")");
}
