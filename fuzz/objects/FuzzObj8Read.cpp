// Fuzzing the OBJ8 reader on arbitrary bytes, then validation and the conversion
// back to OBJ7, which must both cope with whatever the reader accepted.
#include "objects/Obj8Reader.h"
#include "objects/Obj8ToObj7.h"
#include "objects/Obj8Validate.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    XObj8 obj;
    if (!XObj8ReadMemory(data, size, obj)) return 0;
    if (obj.lods.empty()) std::abort(); // an accepted file always has a level
    std::string why;
    XObj8Validate(obj, &why);
    XObj old;
    Obj8ToObj7(obj, old);
    return 0;
}
