#include "tests/support/cases.h"

using namespace zavra::test;

const Payload xyz = Payload().f32_range(1, 3);
const Payload measurement = Payload().f32_range(1, 3).u64(0x0102030405060708);
const std::string xyz_bytes = "3f800000 40000000 40400000";
const Payload interval = Payload().u64(0x0102030405060708);

const std::string common_labels =
    "SENSOR_STDDEV.{XYZ} SENSOR_SENSITIVITY.{XYZ} QUATERNION.Q_{1234} UPDATE_INTERVAL_MSEC SENSOR_CORRECTION_ENABLE* ";
const std::string filter_labels = "AVG_FILTER_ENABLE* AVG_FILTER_COUNTER AVG_FILTER_CRITERION ";
const std::string gyro_labels =
    "OUTPUT_TYPE* " + common_labels +
    "CORRECTION_SCALE.M{123}1 CORRECTION_SCALE.M{23}{123} CORRECTION_OFFSET.{XYZ} BIAS_COUNTER " + filter_labels;
const std::string magnetometer_labels = common_labels + "CORRECTION_SCALE.M{123}{123} CORRECTION_OFFSET.{XYZ} " +
                                        filter_labels +
                                        "MOVING_AVG_FILTER_ENABLE* MOVING_AVG_FILTER_GAIN MOVING_AVG_FILTER_CRITERION";

/// A command that carries nothing but the sensor's index.
template <class Sensor>
static auto index_only(Sensor sensor)
{
    const std::string payload = "0100" + hexadecimal({static_cast<unsigned char>(sensor)});
    return [=](void (Api::*method)(Sensor), const char* words, const std::string& identifier,
               const char* device_words = "") {
        return set(call(method, sensor), words, device_words, identifier + payload);
    };
}

// The index is the value of the enumeration cut to 8 bits.

static std::vector<Case> gyro_cases(unsigned int value)
{
    const auto gyro = static_cast<VELM_ZAVRA_API_GYROSCOPES>(value);
    const auto index = static_cast<unsigned char>(value);
    const std::string i = hexadecimal({index});
    const auto plain = index_only(gyro);
    const Lines lines = Lines{std::string("GYRO_INDEX: dec = ") + static_cast<char>(index)} +
                        dump("ZAVRA_100_Gyroscope_Parameters", "", gyro_labels);
    return {
        set(call(&Api::Set_Gyro_Values, gyro, xyz), "set gyro values", "a101 0d00" + i + xyz_bytes),
        get(call(&Api::Get_Gyro_Values, gyro), "get gyro values", "a102 0100" + i, measurement,
            dump("", "ANGULAR_VELOCITY_BF_RADPS.", "{XYZ}")),
        set(call(BOTH(Set_Gyro_Parameters), gyro, gyro_payload), "set gyro parameters", "Set Gyro Parameter",
            "a103 7000" + i + gyro_payload, lines),
        get(call(BOTH(Get_Gyro_Parameters), gyro), "get gyro parameters", "Get Gyro Parameter", "a104 0100" + i,
            gyro_payload, lines),
        set(call(&Api::Set_Gyro_Update_Interval, gyro, 0x0102030405060708), "set gyro update interval",
            "a105 0900" + i + "0102030405060708"),
        get(call(&Api::Get_Gyro_Update_Interval, gyro), "get gyro update interval", "a106 0100" + i, interval),
        plain(&Api::Enable_Gyro_Correction, "enable gyro correction", "a107"),
        plain(&Api::Disable_Gyro_Correction, "disable gyro correction", "a108"),
        plain(&Api::Start_Gyro_Bias_Calculation, "start gyro bias calculation", "a109"),
        set(call(&Api::Set_Gyro_Bias_Value, gyro, xyz), "set gyro bias values", "Set Gyro Bias Value",
            "a10a 0d00" + i + xyz_bytes),
        get(call(&Api::Get_Gyro_Bias_Value, gyro), "get gyro bias values", "Get Gyro Bias Value", "a10b 0100" + i, xyz),
        plain(&Api::Enable_Gyro_Bias_Removement, "enable gyro bias removement", "a10c"),
        plain(&Api::Disable_Gyro_Bias_Removement, "disable gyro bias removement", "a10d"),
        plain(&Api::Enable_Gyro_Averaging_Filter, "enable gyro averaging filter", "a10e"),
        plain(&Api::Disable_Gyro_Averaging_Filter, "disable gyro averaging filter", "a10f"),
    };
}

static std::vector<Case> magnetometer_cases(unsigned int value)
{
    const auto mtm = static_cast<VELM_ZAVRA_API_MAGNETOMETERS>(value);
    const std::string i = hexadecimal({static_cast<unsigned char>(value)});
    const auto plain = index_only(mtm);
    return {
        set(call(&Api::Set_Magnetometer_Values, mtm, xyz), "set magnetometer values", "Set Magnetometer Value",
            "a201 0d00" + i + xyz_bytes),
        set(call(&Api::Set_Magnetometer_Update_Interval, mtm, 0x0102030405060708), "set magnetometer update interval",
            "a205 0900" + i + "0102030405060708"),
        plain(&Api::Enable_Magnetometer_Correction, "enable magnetometer correction", "a207"),
        plain(&Api::Disable_Magnetometer_Correction, "disable magnetometer correction", "a208"),
        plain(&Api::Enable_Magnetometer_Averaging_Filter, "enable magnetometer averaging filter", "a209"),
        plain(&Api::Disable_Magnetometer_Averaging_Filter, "disable magnetometer averaging filter", "a20a"),
        plain(&Api::Enable_Magnetometer_Moving_Averaging_Filter, "enable magnetometer moving averaging filter", "a20b",
              "Enable Moving Magnetometer Averaging Filter"),
        plain(&Api::Disable_Magnetometer_Moving_Averaging_Filter, "disable magnetometer moving averaging filter",
              "a20c", "Disable Moving Magnetometer Averaging Filter"),
        // The last two have a refusal of their own.
        get(call(&Api::Get_Magnetometer_Values, mtm), "get magnetometer values", "Get Magnetometer Value",
            "a202 0100" + i, measurement),
        get(call(&Api::Get_Magnetometer_Update_Interval, mtm), "get magnetometer update interval", "a206 0100" + i,
            interval),
    };
}

TEST_F(Operation_Test, gyroscopes)
{
    check(gyro_cases(2));
    check(gyro_cases(0x101));
    for (const unsigned int value : {3, 255}) {
        std::vector<Case> cases = gyro_cases(value);
        for (Case& each : cases)
            each.device_words += each.device_words.ends_with("Bias Value") ? "s" : "";
        check_refused(cases, "unknown gyro index");
    }
}

TEST_F(Operation_Test, magnetometer)
{
    check(magnetometer_cases(0));
    for (const unsigned int value : {1, 255}) {
        std::vector<Case> cases = magnetometer_cases(value);
        std::vector<Case> getters(cases.end() - 2, cases.end());
        getters[0].device_words = "Get Magnetometer Values";
        check_refused(getters, "unknown gyro index");
        cases.resize(cases.size() - 2);
        check_refused(cases, "unknown magnetometer index");
    }
}

TEST_F(Operation_Test, magnetometer_parameters_and_sun_vector)
{
    constexpr auto mtm = static_cast<VELM_ZAVRA_API_MAGNETOMETERS>(5);
    const std::string bytes = magnetometer_payload.hexadecimal();
    const Lines lines =
        Lines{"ZAVRA_100_Magnetometer_Parameters"} + dump("MAGNETOMETER_INDEX: dec = \5", "", magnetometer_labels);
    testing::internal::CaptureStdout();
    check({
        // Neither checks the index, and the getter does not send it.
        set(call(BOTH(Set_Magnetometer_Parameters), mtm, magnetometer_payload), "set magnetometer parameters",
            "Set Sun Vector", "a203 7400 05" + bytes, lines),
        get(call(BOTH(Get_Magnetometer_Parameters), mtm), "get magnetometer parameters", "Set Sun Vector",
            "a204 0100 00", magnetometer_payload, lines),
        set(call(&Api::Set_Sun_Vector, xyz, 4), "set sun vector", "a330 1400" + xyz_bytes + "0000000000000004",
            dump("", "", "SUN_VECTOR_SF.{XYZ} EPOCH_TIME_msec")),
    });
    const std::string printed = "05" + bytes;
    EXPECT_EQ(testing::internal::GetCapturedStdout(), printed + printed + printed)
        << "printed whether it can be sent or not";
}
