#pragma once

#include "com/Reference.h"
