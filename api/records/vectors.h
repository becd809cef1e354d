#pragma once

/// @file
/// Vectors, quaternions and matrices that the API's records share. All members are IEEE 754 single precision.

/// Three components along the axes x, y, z of the frame that the field's description names.
struct VELM_ZAVRA_API_VECTOR3_XYZ_FLOAT
{
    float x;
    float y;
    float z;
};

/// Quaternion. Mind the order of declaration: q_3 stands before q_2. The library converts components by name.
struct VELM_ZAVRA_API_QUATERNION_FLOAT
{
    float q_1;
    float q_3;
    float q_2;
    float q_4;
};

/// 3x3 matrix; mRC is the element in row R and column C.
struct VELM_ZAVRA_API_MATRIX3X3_FLOAT
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
