/* What the programs in C share. */
#ifndef TESTS_C_SUPPORT_H
#define TESTS_C_SUPPORT_H

#include <stdio.h>
#include <string.h>

#include "vxprivacy/c/vxprivacy.h"

static int failures = 0;

static void check(int holds, const char* what, int line) {
    if (holds)
        return;
    fprintf(stderr, "line %d: %s\n", line, what);
    ++failures;
}
#define CHECK(condition) check(condition, #condition, __LINE__)

static vx_settings* settings_for(const char* store, const char* packaged) {
    vx_settings* settings = NULL;
    vx_settings_create(&settings);
    vx_set_text(settings, VX_STORE, store, strlen(store));
    vx_set_text(settings, VX_PACKAGED, packaged, strlen(packaged));
    vx_set_text(settings, VX_COLLECTOR_HOST, "http://127.0.0.1:9", 18);
    vx_set_number(settings, VX_SITE, 12);
    vx_set_number(settings, VX_PRIVACY, 5);
    vx_set_number(settings, VX_LOG_LEVEL, 4);
    return settings;
}

static vx_module* create(vx_settings* settings) {
    vx_module* module = NULL;
    CHECK(vx_create(settings, &module) == VX_OK);
    return module;
}

static vx_asking asking(vx_module* module) {
    vx_asking answer = -1;
    CHECK(vx_must_ask(module, &answer) == VX_OK);
    return answer;
}

static int accepted(vx_module* module, int category) {
    int answer = -1;
    CHECK(vx_category_accepted(module, category, &answer) == VX_OK);
    return answer;
}

/* Does to the page's first `element` what the user would, and gives the patch. */
static void act(vx_center* center, const char* element, const char* event, char** patch) {
    char* html = NULL;
    char written[200];
    char page[80] = "";
    char id[40] = "";
    size_t length;
    const char* place;
    CHECK(vx_center_page(center, &html, &length) == VX_OK && strlen(html) == length);
    sscanf(strstr(html, "data-page=\""), "data-page=\"%79[^\"]", page);
    for (place = strstr(html, element); place && strncmp(place, "id=\"", 4) != 0;)
        --place;
    CHECK(place && sscanf(place, "id=\"%39[^\"]", id) == 1);
    sprintf(written, event, page, id);
    CHECK(vx_center_dispatch(center, written, strlen(written), patch, &length) == VX_OK);
    vx_free(html);
}

#endif
