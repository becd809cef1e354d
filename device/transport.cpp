#include "../protocol/codec.h"
#include "../protocol/frame.h"
#include "ZAVRA_100.h"
#include "debug.h"
#include "failure.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <unistd.h>

using namespace zavra;

namespace
{

constexpr useconds_t execution_wait_usec = 100'000;
constexpr useconds_t retry_wait_usec = 300'000;
constexpr int max_attempts = 10;

constexpr const char* generic_set = "use Generic-SET for ZAVRA";
constexpr const char* generic_get = "use Generic-GET for ZAVRA";
constexpr const char* native_get = "use Native-GET for ZAVRA Star Tracker";

/// Waits the whole time, also when signals interrupt it.
void wait(useconds_t usec)
{
    using std::chrono::steady_clock;
    const auto end = steady_clock::now() + std::chrono::microseconds(usec);
    while (usleep(usec) != 0 && errno == EINTR) {
        const auto rest = std::chrono::ceil<std::chrono::microseconds>(end - steady_clock::now());
        if (rest.count() <= 0)
            return;
        usec = static_cast<useconds_t>(rest.count());
    }
}

/// Refuses a transfer that cannot be made; these texts stand behind a colon, not in parentheses.
void require(bool condition, const char* action, const char* problem)
{
    if (!condition)
        fail<ZAVRA_100_Exception>(std::string("Failed to ") + action + ": " + problem, refused);
}

void check_request(const char* action, const unsigned char* data, unsigned int num_data_bytes)
{
    require(data != nullptr || num_data_bytes == 0, action,
            "empty data byte array (NULL) but non-zero num_data_bytes parameter");
}

constexpr const char* too_many_data_bytes = "too many data bytes (>512)";

/// Reads until a response passes its CRC check. The unit answers the last request it received, so that `request` is
/// made again before every attempt.
template <class Request>
void read_checked(ZAVRA_100& device, const char* action, Request&& request, unsigned char* response,
                  unsigned int num_response_bytes)
{
    unsigned char buffer[max_payload_bytes + crc_bytes];
    const unsigned int num_read_bytes = num_response_bytes + crc_bytes;
    for (int attempt_count = 0; attempt_count < max_attempts; ++attempt_count) {
        request();
        attempt<VELM_I2C_DEV_Exception>(action, [&] {
            debug_line(values, "Read response bytes");
            device.I2CReadByteArray(buffer, static_cast<int>(num_read_bytes));
            debug_bytes("Response (hex) : ", buffer, num_read_bytes);
        });
        if (device.check_message_crc8(buffer, num_response_bytes)) {
            std::copy_n(buffer, num_response_bytes, response);
            return;
        }
        warn("Retry because of CRC");
        wait(retry_wait_usec);
    }
    fail<ZAVRA_100_Exception>(failure(action, "Bad response CRC, Retry failed"), damaged);
}

}

void ZAVRA_100::ZAVRA_Generic_Set(unsigned short command, unsigned char* data, unsigned int num_data_bytes)
{
    check_request(generic_set, data, num_data_bytes);
    require(num_data_bytes <= max_payload_bytes, generic_set, too_many_data_bytes);

    unsigned char frame[max_frame_bytes];
    put(frame, command);
    put_little_endian(frame + sizeof command, static_cast<unsigned short>(num_data_bytes));
    std::copy_n(data, num_data_bytes, frame + frame_header_bytes);
    const unsigned int num_protected_bytes = frame_header_bytes + num_data_bytes;
    frame[num_protected_bytes] = crc8_ccitt(frame, num_protected_bytes);
    const unsigned int num_frame_bytes = num_protected_bytes + crc_bytes;

    debug_bytes("Command (hex) : ", frame, num_frame_bytes);
    attempt<VELM_I2C_DEV_Exception>(generic_set, [&] {
        I2CWriteByteArray(frame, static_cast<int>(num_frame_bytes));
        wait(execution_wait_usec);
    });
}

void ZAVRA_100::ZAVRA_Generic_Get(unsigned short command, unsigned char* data, unsigned int num_data_bytes,
                                  unsigned char* response, unsigned int num_response_bytes)
{
    check_request(generic_get, data, num_data_bytes);
    require(response != nullptr || num_response_bytes == 0, generic_get,
            "empty response byte array (NULL) but non-zero num_response_bytes parameter");
    require(num_data_bytes <= max_payload_bytes, generic_get, too_many_data_bytes);
    require(num_response_bytes <= max_payload_bytes, generic_get, "too many response bytes (>512)");

    const auto request = [&] {
        attempt("use Generic-GET for ZAVRA: Generic-SET command failed",
                [&] { ZAVRA_Generic_Set(command, data, num_data_bytes); });
    };
    read_checked(*this, generic_get, request, response, num_response_bytes);
}

void ZAVRA_100::ZAVRA_Startracker_Native_Get(unsigned char* response, unsigned int num_response_bytes)
{
    require(num_response_bytes <= max_native_response_bytes, native_get, "too many response bytes (>256)");
    read_checked(
        *this, native_get, [] {}, response, num_response_bytes);
}
