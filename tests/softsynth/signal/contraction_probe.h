// An expression that a compiler likes to contract.

#pragma once

namespace tarquil {

float multiply_and_add(float a, float b, float c);

} // namespace tarquil
