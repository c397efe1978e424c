// Declares a name of the same spelling as an API declaration that must be absent at a translation
// unit's API level: if the headers declare it, the build fails with a redeclaration error.
#pragma once

#define EXPECT_UNDECLARED(name) [[maybe_unused]] static const int name = 0
