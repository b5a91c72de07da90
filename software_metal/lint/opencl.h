// Stands before a kernel text that is compiled as C++ for OpenCL: the same words mean the same
// there.
#pragma once

#pragma OPENCL EXTENSION cl_khr_fp16 : enable
typedef unsigned char uchar;
typedef unsigned short ushort;
typedef unsigned int uint;
typedef unsigned long ulong;
typedef float float2 __attribute__((ext_vector_type(2)));
typedef float float3 __attribute__((ext_vector_type(3)));
typedef float float4 __attribute__((ext_vector_type(4)));
typedef half half4 __attribute__((ext_vector_type(4)));
typedef uint uint2 __attribute__((ext_vector_type(2)));

// Its functions are OpenCL's own.
namespace metal {}

inline float2 make_float2(float x, float y) {
    return (float2)(x, y);
}
inline float3 make_float3(float x, float y, float z) {
    return (float3)(x, y, z);
}
inline float4 make_float4(float x) {
    return (float4)(x);
}
inline float4 make_float4(float x, float y, float z, float w) {
    return (float4)(x, y, z, w);
}
inline float4 make_float4(half4 h) {
    return __builtin_convertvector(h, float4);
}
inline half4 make_half4(float4 f) {
    return __builtin_convertvector(f, half4);
}
#define float2(...) make_float2(__VA_ARGS__)
#define float3(...) make_float3(__VA_ARGS__)
#define float4(...) make_float4(__VA_ARGS__)
#define half4(...) make_half4(__VA_ARGS__)
#define device __global
#define constant __constant
#define thread __private
#define threadgroup __local
