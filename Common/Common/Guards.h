#pragma once

#include "SourcePath.h"
#include "Violations.h"

/// Throws common::ECheckViolation, naming this file and line, unless the condition holds.
#define COMMON_CHECK(...)                                                                                              \
    do {                                                                                                               \
        if (!(__VA_ARGS__)) [[unlikely]] {                                                                             \
            ::common::throwCheckViolation(COMMON_SOURCE_PATH, __LINE__);                                               \
        }                                                                                                              \
    } while (false)

/// Throws common::EPreconditionViolation, naming this file and line, unless the condition holds.
#define COMMON_PRECONDITION(...)                                                                                       \
    do {                                                                                                               \
        if (!(__VA_ARGS__)) [[unlikely]] {                                                                             \
            ::common::throwPreconditionViolation(COMMON_SOURCE_PATH, __LINE__);                                        \
        }                                                                                                              \
    } while (false)
