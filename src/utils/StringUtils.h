// Small string helpers of the toolkit (host-free part of HV_GNLUtils).
#pragma once

#include <string>

namespace HV_GNLUtils {

/// First index of part in text, searching only i < strlen(text) - strlen(part)
/// (an occurrence that ends exactly at the end of text is not found); -1 otherwise.
int GetPositionOf(const char* text, const char* part);

/// Splits text at its first "/" into left and right (each must hold strlen(text) + 1 bytes).
/// Returns 3 when "/" follows at least one character, 2 when text starts with "/", 1 when there
/// is none (left = text, right = "").
int GetLeftAndRight(const char* text, char* left, char* right);

/// Capitalises only the letters b..y ("abz" -> "aBz").
void SetUpperCase(char* text);
/// Lower-cases only the letters B..Y.
void SetLowerCase(char* text);
/// SetUpperCase(char*) over the string's characters.
void SetUpperCase(std::string* text);
/// Also SetUpperCase(char*) over the string's characters (kept behaviour of this form).
void SetLowerCase(std::string* text);

} // namespace HV_GNLUtils
