// The toolkit's colours: fixed constants, and the simulator's own interface
// colours read from its datarefs. Colours are three floats (red, green, blue,
// 0..1); alpha is passed separately.
#pragma once

inline constexpr float HV_OGLUtils_ColorWhite[3] = {1.0f, 1.0f, 1.0f}; ///< white
inline constexpr float HV_OGLUtils_ColorDark[3] = {0.1f, 0.1f, 0.1f};  ///< near black
inline constexpr float HV_OGLUtils_ColorBlack[3] = {0.0f, 0.0f, 0.0f}; ///< black
inline constexpr float HV_OGLUtils_ColorGray[3] = {0.3f, 0.3f, 0.3f};  ///< dark grey
inline constexpr float HV_OGLUtils_ColorRed[3] = {0.9f, 0.4f, 0.4f};   ///< soft red
inline constexpr float HV_OGLUtils_ColorBleu[3] = {0.4f, 0.4f, 0.9f};  ///< soft blue
inline constexpr float HV_OGLUtils_ColorGreen[3] = {0.4f, 0.9f, 0.4f}; ///< soft green

/// Number of simulator interface colours (indices of ColorXPlane).
inline constexpr int kXPlaneColorCount = 12;
/// Dataref names of the simulator's interface colours, three floats each.
extern const char* const kXPlaneColorNames[kXPlaneColorCount];

namespace HV_OGLUtils {
/// Reads the twelve interface colours once; later calls do nothing.
void LoadXPColors();
/// Forgets the colours read and every handle looked up for them: the next use reads the host of then.
void ForgetXPColors();
/// The cached interface colour `index` (0..11); out of range gives white.
float* ColorXPlane(int index);
} // namespace HV_OGLUtils

/// Interface colour `index` (0..5: dark, background, highlight, lite, text, disabled text).
/// Written to `out` when given; with `out` null it becomes the current OpenGL colour with
/// alpha gAlphaLevel. Simulators without the colour dataref get a fallback colour scaled by
/// the cockpit light level. Out-of-range indices give white.
void SetupAmbientColor(int index, float* out);
/// Sets the alpha SetupAmbientColor uses for the OpenGL colour.
void SetAlphaLevels(float alpha);
/// Alpha SetupAmbientColor uses for the OpenGL colour, initially 1.0.
extern float gAlphaLevel;
