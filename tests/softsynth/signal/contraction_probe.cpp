// An expression that a compiler likes to contract; built for machines with a fused multiply-add.

namespace tarquil {

float multiply_and_add(float a, float b, float c) {
    return a * b + c;
}

} // namespace tarquil
