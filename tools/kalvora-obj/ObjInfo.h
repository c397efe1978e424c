// What "kalvora-obj info" and "validate" tell about a loaded object.
#pragma once

#include "ObjFiles.h"

#include <ostream>
#include <string>

/// Validates the model (an OBJ7 model through its OBJ8 conversion); false with the reason in *why.
bool ValidateLoaded(const LoadedObject& obj, std::string* why);
/// Prints format, textures, counts, levels, commands by kind, animations and validation.
void PrintInfo(std::ostream& out, const std::string& path, const LoadedObject& obj);
