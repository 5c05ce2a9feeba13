#pragma once

#include "FontEngineExport.h"
