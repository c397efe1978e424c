// Checking that every command of an XObj8 stays inside the object's arrays, so
// that a drawer which does not check never reads outside them.
#pragma once

#include "objects/ObjModel.h"

#include <string>

/// True when the object is safe to draw; otherwise false and, when `why` is not null, the first reason found.
bool XObj8Validate(const XObj8& obj, std::string* why);
