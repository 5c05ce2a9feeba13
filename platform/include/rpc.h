#pragma once

// New identifiers.

#include <unknwn.h>

using RPC_STATUS = LONG;

#define RPC_S_OK 0

extern "C" {

/// Stores a new random identifier (version 4) and returns RPC_S_OK. Thread-safe.
PLATFORM_EXPORT RPC_STATUS UuidCreate(UUID* uuid);
}
