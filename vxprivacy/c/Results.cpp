#include "vxprivacy/c/vxprivacy.h"

const char* vx_result_text(vx_result result) {
    switch (result) {
    case VX_OK:
        return "all went well";
    case VX_INVALID_ARGUMENT:
        return "an argument is null, out of range or not UTF-8";
    case VX_INVALID_HANDLE:
        return "a handle is null, gone or of another kind";
    case VX_WRONG_THREAD:
        return "this is not the thread that made it, or a forked process";
    case VX_WRONG_STATE:
        return "too early, too late, or from within a function that the module called";
    case VX_NO_MEMORY:
        return "there is no memory left";
    default:
        return "something went wrong; the log says more";
    }
}
