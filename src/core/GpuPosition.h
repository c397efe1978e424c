// Where the ground power unit stands, in the host's local frame, and the
// accessors of its published position datarefs (published as float, kept as double).
#pragma once

extern double gpuX; ///< metres, local frame
extern double gpuY; ///< metres, local frame (apron elevation)
extern double gpuZ; ///< metres, local frame

/// Accessors of "halvern/kalvora/GPU/position_ogl_x/y/z" (metres).
float GetGPUPosX(void* refcon);
float GetGPUPosY(void* refcon);
float GetGPUPosZ(void* refcon);
void SetGPUPosX(void* refcon, float value);
void SetGPUPosY(void* refcon, float value);
void SetGPUPosZ(void* refcon, float value);
