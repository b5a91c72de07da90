#pragma once

#include <_declare.h>

typedef float float_t;
typedef double double_t;
#define HUGE_VAL __builtin_huge_val()
#define HUGE_VALF __builtin_huge_valf()
#define HUGE_VALL __builtin_huge_vall()
#define NAN __builtin_nanf("")
#define INFINITY __builtin_inff()
#define FP_NAN 1
#define FP_INFINITE 2
#define FP_ZERO 3
#define FP_NORMAL 4
#define FP_SUBNORMAL 5
#define FP_ILOGB0 (-2147483647 - 1)
#define FP_ILOGBNAN (-2147483647 - 1)
#define MATH_ERRNO 1
#define MATH_ERREXCEPT 2
#define math_errhandling MATH_ERREXCEPT

// Each declares the double, the float and the long double form: a function of one argument, of two
// and of three of its type, one with another result, one with another second argument.
#define TW_MATH_1(n)   \
    double n(double);  \
    float n##f(float); \
    long double n##l(long double)
#define TW_MATH_2(n)          \
    double n(double, double); \
    float n##f(float, float); \
    long double n##l(long double, long double)
#define TW_MATH_3(n)                  \
    double n(double, double, double); \
    float n##f(float, float, float);  \
    long double n##l(long double, long double, long double)
#define TW_MATH_RESULT(r, n) \
    r n(double);             \
    r n##f(float);           \
    r n##l(long double)
#define TW_MATH_SECOND(n, x) \
    double n(double, x);     \
    float n##f(float, x);    \
    long double n##l(long double, x)

TW_C_BEGIN
TW_MATH_1(acos);
TW_MATH_1(asin);
TW_MATH_1(atan);
TW_MATH_1(cos);
TW_MATH_1(sin);
TW_MATH_1(tan);
TW_MATH_1(acosh);
TW_MATH_1(asinh);
TW_MATH_1(atanh);
TW_MATH_1(cosh);
TW_MATH_1(sinh);
TW_MATH_1(tanh);
TW_MATH_1(exp);
TW_MATH_1(exp2);
TW_MATH_1(expm1);
TW_MATH_1(log);
TW_MATH_1(log2);
TW_MATH_1(log10);
TW_MATH_1(log1p);
TW_MATH_1(logb);
TW_MATH_1(sqrt);
TW_MATH_1(cbrt);
TW_MATH_1(fabs);
TW_MATH_1(erf);
TW_MATH_1(erfc);
TW_MATH_1(tgamma);
TW_MATH_1(lgamma);
TW_MATH_1(ceil);
TW_MATH_1(floor);
TW_MATH_1(nearbyint);
TW_MATH_1(rint);
TW_MATH_1(round);
TW_MATH_1(trunc);
TW_MATH_2(atan2);
TW_MATH_2(pow);
TW_MATH_2(hypot);
TW_MATH_2(fmod);
TW_MATH_2(remainder);
TW_MATH_2(copysign);
TW_MATH_2(nextafter);
TW_MATH_2(fdim);
TW_MATH_2(fmax);
TW_MATH_2(fmin);
TW_MATH_3(fma);
TW_MATH_RESULT(long, lrint);
TW_MATH_RESULT(long, lround);
TW_MATH_RESULT(long long, llrint);
TW_MATH_RESULT(long long, llround);
TW_MATH_RESULT(int, ilogb);
TW_MATH_SECOND(ldexp, int);
TW_MATH_SECOND(scalbn, int);
TW_MATH_SECOND(scalbln, long);
TW_MATH_SECOND(frexp, int*);
double modf(double, double*);
float modff(float, float*);
long double modfl(long double, long double*);
double remquo(double, double, int*);
float remquof(float, float, int*);
long double remquol(long double, long double, int*);
double nexttoward(double, long double);
float nexttowardf(float, long double);
long double nexttowardl(long double, long double);
double nan(const char*);
float nanf(const char*);
long double nanl(const char*);
TW_C_END
