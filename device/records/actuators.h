#pragma once

#include "vectors.h"
