/* Compiled as C99 with -Wpedantic: the header must stand alone. */
#include "autoscene_plugin.h"

MV_API mv_node* MV_CALL header_check_c(const mv_image* image, const mv_node* params) {
    (void)image;
    return (mv_node*)params;
}
