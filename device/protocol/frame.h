#pragma once

namespace zavra
{

/// A request is a header (identifier big-endian, payload length little-endian), the payload and a CRC-8 over both.
/// A response is its payload and a CRC-8 over the payload.
inline constexpr unsigned int frame_header_bytes = 4;
inline constexpr unsigned int crc_bytes = 1;
inline constexpr unsigned int max_payload_bytes = 512;
inline constexpr unsigned int max_frame_bytes = frame_header_bytes + max_payload_bytes + crc_bytes;
inline constexpr unsigned int max_native_response_bytes = 256;

}
