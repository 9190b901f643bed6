#pragma once

/// Marks what programs may use from the shared library; everything else stays inside it.
#define OMBREL_EXPORT __attribute__((visibility("default")))
