#include "VELM_ZAVRA_API.h"

void VELM_ZAVRA_API::Initialize_Device(std::string) {}
