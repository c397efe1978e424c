// Loads arbitrary bytes as a properties file, saves the map and checks that it reads back.
#include "utils/HV_Properties.h"

#include "FuzzInputFile.h"

#include <cstdlib>
#include <sstream>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const kalvora_fuzz::InputFile file(data, size);
    std::ostringstream errors;
    HV_Properties props(file.path(), &errors);
    for (const auto& pair : props.entries) {
        // Loaded keys are never empty and values never hold "=" or a line break.
        if (pair.first.empty() || pair.second.find_first_of("=\r\n") != std::string::npos) abort();
        if (pair.first.size() + pair.second.size() + 1 >= kPropertiesLineBytes) abort();
    }
    props.save(&errors);
    HV_Properties again(file.path(), &errors);
    if (again.entries != props.entries) abort();
    std::ostringstream dump;
    dump << props;
    return 0;
}
