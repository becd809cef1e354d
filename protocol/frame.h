#pragma once

#include "codec.h"
#include "crc8.h"

#include <span>

namespace zavra
{

/// A request is a header (identifier big-endian, payload length little-endian), the payload and a CRC-8 over both.
/// A response is its payload and a CRC-8 over the payload.
inline constexpr unsigned int frame_header_bytes = 4;
inline constexpr unsigned int crc_bytes = 1;
inline constexpr unsigned int max_payload_bytes = 512;
inline constexpr unsigned int max_frame_bytes = frame_header_bytes + max_payload_bytes + crc_bytes;
inline constexpr unsigned int max_native_response_bytes = 256;

/// A request frame taken apart.
struct Request_Frame
{
    bool crc_right = false;
    bool has_header = false; ///< long enough for a header and a CRC
    unsigned short identifier = 0;
    unsigned short announced = 0; ///< bytes of payload, as the header says
    std::span<const unsigned char> payload;

    /// Whether it has the length that its header says.
    constexpr bool whole() const { return has_header && announced == payload.size(); }
};

constexpr Request_Frame take_apart(std::span<const unsigned char> bytes)
{
    Request_Frame frame;
    if (bytes.empty())
        return frame;
    const auto guarded = bytes.first(bytes.size() - crc_bytes);
    frame.crc_right = crc8(guarded) == bytes.back();
    frame.has_header = guarded.size() >= frame_header_bytes;
    if (frame.has_header) {
        frame.identifier = get<unsigned short>(guarded.data());
        frame.announced = get_little_endian<unsigned short>(guarded.data() + sizeof frame.identifier);
        frame.payload = guarded.subspan(frame_header_bytes);
    }
    return frame;
}

/// Whether the last byte of a frame or response is the CRC of those before it; not so where there is none.
constexpr bool crc_is_right(std::span<const unsigned char> bytes)
{
    return !bytes.empty() && crc8(bytes) == 0;
}

}
