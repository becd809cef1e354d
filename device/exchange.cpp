#include "exchange.h"

namespace zavra
{

void send_bytes(ZAVRA_100& device, unsigned short identifier, const char* action, unsigned char* payload,
                unsigned int length)
{
    attempt(action, [&] { device.ZAVRA_Generic_Set(identifier, payload, length); });
}

void ask_bytes(ZAVRA_100& device, unsigned short identifier, const char* action, unsigned char* payload,
               unsigned int length, unsigned char* response, unsigned int response_length)
{
    attempt(action, [&] { device.ZAVRA_Generic_Get(identifier, payload, length, response, response_length); });
}

}
