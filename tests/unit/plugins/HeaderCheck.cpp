// Compiled as C++ with -Wpedantic: the header must stand alone and give C linkage. The probe
// plug-in is its C99 check.
#include "autoscene_plugin.h"

static_assert(sizeof(mv_node) == 3 * sizeof(void*), "three pointer-sized fields");
static_assert(sizeof(mv_char16) == 2, "UTF-16 code units");

MV_API mv_node* MV_CALL header_check_cpp(const mv_image*, const mv_node* params) {
    return const_cast<mv_node*>(params);
}
