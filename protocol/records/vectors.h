#pragma once

/// @file
/// Vectors, quaternions and matrices that the unit's records share. All members are IEEE 754 single precision.

/// Three components along the axes x, y, z of the frame that the field's description names.
struct ZAVRA_100_Vector3_float
{
    float x;
    float y;
    float z;
};

/// One component per reaction wheel: x, y, z, u, v, w are wheels 0 to 5.
struct ZAVRA_100_Vector6_float
{
    float x;
    float y;
    float z;
    float u;
    float v;
    float w;
};

/// Quaternion in the unit's component order.
struct ZAVRA_100_Quaternion_float
{
    float q_1;
    float q_2;
    float q_3;
    float q_4;
};

/// 3x3 matrix; mRC is the element in row R and column C.
struct ZAVRA_100_Matrix3x3_float
{
    float m11;
    float m12;
    float m13;
    float m21;
    float m22;
    float m23;
    float m31;
    float m32;
    float m33;
};
