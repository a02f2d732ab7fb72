// Random sequences, and what other implementations of BER say of them.
#pragma once

#include <random>
#include <string>

#include "sample.h"

// Fills a new sample: integers of all sizes, strings of `alphabet` up to 300 bytes, each optional
// field there or not, children down to that depth.
void fillRandomly(Sample& sample, std::mt19937& random, const std::string& alphabet, int depth);

// "{number=1,name=6162,place={x=2,y=3},values=[4,5],last=6}", strings in hexadecimal.
std::string valueText(const Sample& sample);
