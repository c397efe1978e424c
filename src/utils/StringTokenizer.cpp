// HV_StringTokenizer: splitting a string on a multi-character delimiter.
#include "utils/HV_StringTokenizer.h"

#include <climits>
#include <cstdlib>
#include <cstring>

namespace {

int BoundedLength(const char* text) {
    const size_t length = strlen(text);
    return length > static_cast<size_t>(INT_MAX) ? INT_MAX : static_cast<int>(length);
}

} // namespace

HV_StringTokenizer::HV_StringTokenizer(const char* input, const char* separator) {
    if (!input) input = "";
    textLength = BoundedLength(input);
    text = static_cast<char*>(malloc(static_cast<size_t>(textLength) + 1));
    if (text) {
        memcpy(text, input, static_cast<size_t>(textLength));
        text[textLength] = '\0';
    } else {
        textLength = 0;
    }
    if (separator) {
        strncpy(delimiter, separator, kTokenizerDelimiterBytes - 1);
        delimiter[kTokenizerDelimiterBytes - 1] = '\0';
    }
    delimiterLength = BoundedLength(delimiter);
}

HV_StringTokenizer::~HV_StringTokenizer() {
    free(text);
}

bool HV_StringTokenizer::HasMoreTocken() const {
    return static_cast<long>(textLength) > static_cast<long>(position) + delimiterLength;
}

bool HV_StringTokenizer::GetNextTocken(char* out, int maxLength) {
    if (!HasMoreTocken()) {
        if (out) out[0] = '\0';
        return false;
    }
    // A delimiter that ends exactly at the end of the text is not looked at. An empty
    // delimiter would match everywhere and never advance: the rest is then one token.
    int tokenLength = textLength - position;
    if (delimiterLength > 0) {
        for (int j = position; j < textLength - delimiterLength; ++j) {
            if (memcmp(text + j, delimiter, static_cast<size_t>(delimiterLength)) == 0) {
                tokenLength = j - position;
                break;
            }
        }
    }
    if (out) {
        int copied = tokenLength;
        if (maxLength > 0 && copied > maxLength - 1) copied = maxLength - 1;
        memcpy(out, text + position, static_cast<size_t>(copied));
        out[copied] = '\0';
    }
    position += tokenLength + delimiterLength;
    return true;
}
