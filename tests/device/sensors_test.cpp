#include "tests/support/command_cases.h"
#include "tests/support/sensor_payloads.h"

namespace zavra::test
{

namespace
{

/// A command that names a sensor.
struct Sensor_Case
{
    std::string header;
    std::function<void(ZAVRA_100&, unsigned char)> call;
    std::string action;
    std::string arguments = {}; ///< what stands behind the index
    std::string response = {};
    std::string refusal = {};             ///< where it is not the action and the usual reason
    std::vector<std::string> dumped = {}; ///< its own debug lines
};

/// A row for the commands that carry nothing but the sensor's index.
Sensor_Case index_only(const std::string& identifier, void (ZAVRA_100::*method)(unsigned char), const char* action)
{
    return {identifier + "0100", [method](ZAVRA_100& d, unsigned char i) { (d.*method)(i); }, action};
}

constexpr ZAVRA_100_Vector3_float one_two_three{1, 2, 3};
const std::string xyz = "3f800000 40000000 40400000";
const std::string u64 = "0102030405060708";
constexpr unsigned long long u64_value = 0x0102030405060708;

/// Lines of fields that count up from 1; those whose label ends in a star print the byte itself.
std::vector<std::string> counted(std::vector<std::string> lines, const std::string& labels)
{
    std::istringstream text(labels);
    int value = 0;
    for (std::string label; text >> label;) {
        ++value;
        const bool character = label.back() == '*';
        label = label.substr(0, label.find('*')) + ": dec = ";
        lines.push_back(label + (character ? std::string(1, static_cast<char>(value)) : std::to_string(value)));
    }
    return lines;
}

const std::string common_labels =
    "SENSOR_STDDEV.X SENSOR_STDDEV.Y SENSOR_STDDEV.Z SENSOR_SENSITIVITY.X SENSOR_SENSITIVITY.Y SENSOR_SENSITIVITY.Z "
    "QUATERNION.Q_1 QUATERNION.Q_2 QUATERNION.Q_3 QUATERNION.Q_4 UPDATE_INTERVAL_MSEC SENSOR_CORRECTION_ENABLE* ";
const std::string gyro_labels =
    "OUTPUT_TYPE* " + common_labels +
    "CORRECTION_SCALE.M11 CORRECTION_SCALE.M21 CORRECTION_SCALE.M31 CORRECTION_SCALE.M21 CORRECTION_SCALE.M22 "
    "CORRECTION_SCALE.M23 CORRECTION_SCALE.M31 CORRECTION_SCALE.M32 CORRECTION_SCALE.M33 CORRECTION_OFFSET.X "
    "CORRECTION_OFFSET.Y CORRECTION_OFFSET.Z BIAS_COUNTER AVG_FILTER_ENABLE* AVG_FILTER_COUNTER AVG_FILTER_CRITERION";
const std::string magnetometer_labels =
    common_labels +
    "CORRECTION_SCALE.M11 CORRECTION_SCALE.M12 CORRECTION_SCALE.M13 CORRECTION_SCALE.M21 CORRECTION_SCALE.M22 "
    "CORRECTION_SCALE.M23 CORRECTION_SCALE.M31 CORRECTION_SCALE.M32 CORRECTION_SCALE.M33 CORRECTION_OFFSET.X "
    "CORRECTION_OFFSET.Y CORRECTION_OFFSET.Z AVG_FILTER_ENABLE* AVG_FILTER_COUNTER AVG_FILTER_CRITERION "
    "MOVING_AVG_FILTER_ENABLE* MOVING_AVG_FILTER_GAIN MOVING_AVG_FILTER_CRITERION";

}

class Sensor_Command_Test : public Command_Test
{
protected:
    /// Checks each case with the highest index there is, and that higher ones are refused before anything is sent.
    void check_sensor(const std::vector<Sensor_Case>& cases, unsigned char max_index, const std::string& reason)
    {
        for (const Sensor_Case& c : cases) {
            SCOPED_TRACE(c.action);
            check({{c.action, [&](auto& d) { c.call(d, max_index); }, c.header + hexadecimal({max_index}) + c.arguments,
                    c.response, c.action, c.dumped}});
            platform = {};
            const std::string refusal = c.refusal.empty() ? c.action + reason : c.refusal;
            for (const auto index : {static_cast<unsigned char>(max_index + 1), static_cast<unsigned char>(255)})
                EXPECT_EQ(message_of<ZAVRA_100_Exception>([&] { c.call(device, index); }), "Failed to " + refusal);
            EXPECT_TRUE(platform.events.empty() && platform.debug.empty());
        }
    }

    ZAVRA_100_Vector3_float vector{}, other_vector{};
    unsigned long long msec = 0, other_msec = 0;

    void expect_values() const
    {
        for (const auto& v : {vector, other_vector})
            EXPECT_EQ((std::vector{v.x, v.y, v.z}), (std::vector{1.0F, 2.0F, 3.0F}));
        EXPECT_EQ(msec, u64_value);
        EXPECT_EQ(other_msec, u64_value);
    }
};

TEST_F(Sensor_Command_Test, gyroscopes)
{
    const auto rates = "ANGULAR_VELOCITY_BF_RADPS.X ANGULAR_VELOCITY_BF_RADPS.Y ANGULAR_VELOCITY_BF_RADPS.Z";
    const auto lines = counted({"GYRO_INDEX: dec = \2", "ZAVRA_100_Gyroscope_Parameters"}, gyro_labels);
    constexpr ZAVRA_100_Gyroscope_Parameters written{
        1,  {2, 3, 4}, {5, 6, 7}, {8, 9, 10, 11}, 12, 13, {14, 15, 16, 17, 18, 19, 20, 21, 22}, {23, 24, 25}, 26,
        27, 28,        29};
    ZAVRA_100_Gyroscope_Parameters read{};
    check_sensor(
        {
            {"a1010d00", [](auto& d, auto i) { d.Set_Gyro_Values(i, one_two_three); }, "Set Gyro Values", xyz},
            {"a1020100", [this](auto& d, auto i) { d.Get_Gyro_Values(i, &vector, &msec); }, "Get Gyro Values", "",
             xyz + u64, "", counted({}, rates)},
            {"a1037000", [&](auto& d, auto i) { d.Set_Gyro_Parameters(i, written); }, "Set Gyro Parameter",
             gyro_payload, "", "", lines},
            {"a1040100", [&](auto& d, auto i) { d.Get_Gyro_Parameters(i, &read); }, "Get Gyro Parameter", "",
             gyro_payload, "", lines},
            {"a1050900", [](auto& d, auto i) { d.Set_Gyro_Update_Interval(i, u64_value); }, "Set Gyro Update Interval",
             u64},
            {"a1060100", [this](auto& d, auto i) { d.Get_Gyro_Update_Interval(i, &other_msec); },
             "Get Gyro Update Interval", "", u64},
            index_only("a107", &ZAVRA_100::Enable_Gyro_Correction, "Enable Gyro Correction"),
            index_only("a108", &ZAVRA_100::Disable_Gyro_Correction, "Disable Gyro Correction"),
            index_only("a109", &ZAVRA_100::Start_Gyro_Bias_Calculation, "Start Gyro Bias Calculation"),
            {"a10a0d00", [](auto& d, auto i) { d.Set_Gyro_Bias_Value(i, one_two_three); }, "Set Gyro Bias Value", xyz,
             "", "Set Gyro Bias Values (unknown gyro index)"},
            {"a10b0100", [this](auto& d, auto i) { d.Get_Gyro_Bias_Value(i, &other_vector); }, "Get Gyro Bias Value",
             "", xyz, "Get Gyro Bias Values (unknown gyro index)"},
            index_only("a10c", &ZAVRA_100::Enable_Gyro_Bias_Removement, "Enable Gyro Bias Removement"),
            index_only("a10d", &ZAVRA_100::Disable_Gyro_Bias_Removement, "Disable Gyro Bias Removement"),
            index_only("a10e", &ZAVRA_100::Enable_Gyro_Averaging_Filter, "Enable Gyro Averaging Filter"),
            index_only("a10f", &ZAVRA_100::Disable_Gyro_Averaging_Filter, "Disable Gyro Averaging Filter"),
        },
        2, " (unknown gyro index)");
    expect_values();
    EXPECT_EQ(read.avg_filter_criterion, 29.0F);
}

TEST_F(Sensor_Command_Test, magnetometer)
{
    check_sensor(
        {
            {"a2010d00", [](auto& d, auto i) { d.Set_Magnetometer_Values(i, one_two_three); }, "Set Magnetometer Value",
             xyz},
            {"a2020100", [this](auto& d, auto i) { d.Get_Magnetometer_Values(i, &vector, &msec); },
             "Get Magnetometer Value", "", xyz + u64, "Get Magnetometer Values (unknown gyro index)"},
            {"a2050900", [](auto& d, auto i) { d.Set_Magnetometer_Update_Interval(i, u64_value); },
             "Set Magnetometer Update Interval", u64},
            {"a2060100", [this](auto& d, auto i) { d.Get_Magnetometer_Update_Interval(i, &other_msec); },
             "Get Magnetometer Update Interval", "", u64, "Get Magnetometer Update Interval (unknown gyro index)"},
            index_only("a207", &ZAVRA_100::Enable_Magnetometer_Correction, "Enable Magnetometer Correction"),
            index_only("a208", &ZAVRA_100::Disable_Magnetometer_Correction, "Disable Magnetometer Correction"),
            index_only("a209", &ZAVRA_100::Enable_Magnetometer_Averaging_Filter,
                       "Enable Magnetometer Averaging Filter"),
            index_only("a20a", &ZAVRA_100::Disable_Magnetometer_Averaging_Filter,
                       "Disable Magnetometer Averaging Filter"),
            index_only("a20b", &ZAVRA_100::Enable_Magnetometer_Moving_Averaging_Filter,
                       "Enable Moving Magnetometer Averaging Filter"),
            index_only("a20c", &ZAVRA_100::Disable_Magnetometer_Moving_Averaging_Filter,
                       "Disable Moving Magnetometer Averaging Filter"),
        },
        0, " (unknown magnetometer index)");
    other_vector = vector;
    expect_values();
}

TEST_F(Command_Test, magnetometer_parameters_and_sun_vector)
{
    constexpr ZAVRA_100_Magnetometer_Parameters written{
        {1, 2, 3}, {4, 5, 6}, {7, 8, 9, 10}, 11, 12, {13, 14, 15, 16, 17, 18, 19, 20, 21}, {22, 23, 24}, 25, 26, 27, 28,
        29,        30};
    ZAVRA_100_Magnetometer_Parameters read{};
    const auto lines =
        counted({"ZAVRA_100_Magnetometer_Parameters", "MAGNETOMETER_INDEX: dec = \5"}, magnetometer_labels);
    testing::internal::CaptureStdout();
    check({
        // Neither checks the index, and the getter does not send it.
        {"Set_Magnetometer_Parameters", [&](auto& d) { d.Set_Magnetometer_Parameters(5, written); },
         "a203 7400 05" + magnetometer_payload, "", "Set Sun Vector", lines},
        {"Get_Magnetometer_Parameters", [&](auto& d) { d.Get_Magnetometer_Parameters(5, &read); }, "a204 0100 00",
         magnetometer_payload, "Set Sun Vector", lines},
        {"Set_Sun_Vector", [](auto& d) { d.Set_Sun_Vector(one_two_three, 4); }, "a330 1400" + xyz + "0000000000000004",
         "", "Set Sun Vector", counted({}, "SUN_VECTOR_SF.X SUN_VECTOR_SF.Y SUN_VECTOR_SF.Z EPOCH_TIME_msec")},
    });
    const std::string printed = "05" + magnetometer_payload;
    EXPECT_EQ(testing::internal::GetCapturedStdout(), printed + printed) << "printed whether it can be sent or not";
    EXPECT_EQ(read.moving_avg_filter_criterion, 30.0F);
}

}
