// All containers in one include.
#pragma once

#include "foundation/hashedlists.h"
#include "foundation/lists.h"
#include "foundation/sortedlists.h"
