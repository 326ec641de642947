// All containers in one include.
#pragma once

#include "foundation/lists.h"
