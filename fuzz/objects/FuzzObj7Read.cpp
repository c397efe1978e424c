// Fuzzing the OBJ7 reader on arbitrary bytes, then the conversion to OBJ8, whose
// result must always pass validation (the plug-in refuses models that do not).
#include "objects/Obj7Reader.h"
#include "objects/Obj7ToObj8.h"
#include "objects/Obj8Validate.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    XObj obj;
    if (!XObjReadMemory(data, size, obj)) return 0;
    XObj8 converted;
    Obj7ToObj8(obj, converted);
    std::string why;
    if (!XObj8Validate(converted, &why)) std::abort();
    return 0;
}
