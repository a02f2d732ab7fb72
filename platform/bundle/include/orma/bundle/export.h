#pragma once

// Marks what a platform library shows to the others; everything else stays hidden.
#define ORMA_API __attribute__((visibility("default")))
