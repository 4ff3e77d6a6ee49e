/* The C interface, from C: what an application does with it, and what it may do wrong. */

#include <pthread.h>
#include <string.h>

#include "tests/c/support.h"

/* What the application is told, and what it may do then. */
struct heard {
    vx_module* module;
    int updated;
    int accepted_then;
    vx_result destroyed;
    vx_result refused;
};

static void on_event(void* context, vx_event event) {
    struct heard* heard = (struct heard*)context;
    if (event != VX_CONSENT_UPDATED)
        return;
    ++heard->updated;
    vx_category_accepted(heard->module, 1, &heard->accepted_then);
    heard->refused = vx_refuse_all(heard->module);
    heard->destroyed = vx_destroy(heard->module);
}

static void test_choices(vx_settings* settings) {
    vx_asking asked = VX_ASK_NOT;
    struct heard heard = {NULL, 0, -1, VX_OK, VX_OK};
    double number = -1;
    char* text = NULL;
    size_t length = 7;
    vx_module* module = create(settings);
    heard.module = module;
    CHECK(vx_must_ask(module, &asked) == VX_WRONG_STATE);
    CHECK(vx_on_event(module, on_event, &heard) == VX_OK);
    CHECK(vx_start(module) == VX_OK);
    CHECK(vx_start(module) == VX_WRONG_STATE);
    CHECK(asking(module) == VX_ASK_FIRST_TIME);
    CHECK(vx_accept_all(module) == VX_OK);
    CHECK(heard.updated == 1 && heard.accepted_then == 1);
    CHECK(heard.refused == VX_WRONG_STATE && heard.destroyed == VX_WRONG_STATE);
    CHECK(asking(module) == VX_ASK_NOT && accepted(module, 1) == 1 && accepted(module, 9) == 0);
    CHECK(vx_state(module, VX_CONSENT_STATE, &number) == VX_OK && number == 1);
    CHECK(vx_state(module, VX_WAITING_BEACONS, &number) == VX_OK && number == 1);
    CHECK(vx_state(module, VX_PENDING_SINCE, &number) == VX_OK && number == 0);
    CHECK(vx_stored_text(module, "PRIVACY_CAT_1", 13, &text, &length) == VX_OK);
    CHECK(length == 1 && strcmp(text, "1") == 0);
    vx_free(text);
    CHECK(vx_stored_text(module, "nothing", 7, &text, &length) == VX_OK);
    CHECK(text == NULL && length == 0);
    CHECK(vx_destroy(module) == VX_OK);

    module = create(settings); /* the next run */
    CHECK(vx_start(module) == VX_OK && asking(module) == VX_ASK_NOT && accepted(module, 1) == 1);
    CHECK(vx_refuse_all(module) == VX_OK && accepted(module, 1) == 0);
    CHECK(vx_poll(module) == VX_OK);
    CHECK(vx_destroy(module) == VX_OK);
}

static void test_center(vx_settings* settings) {
    vx_center* center = NULL;
    vx_center* second = NULL;
    char* patch = NULL;
    char* css = NULL;
    size_t length = 0;
    int done = -1;
    vx_module* module = create(settings);
    vx_start(module);
    vx_accept_all(module);
    CHECK(vx_center_open(module, 0, 844, VX_POPUP, &center) == VX_INVALID_ARGUMENT);
    CHECK(vx_center_open(module, 390, 844, VX_POPUP, &center) == VX_OK);
    CHECK(vx_center_open(module, 390, 844, VX_POPUP, &second) == VX_WRONG_STATE);
    act(center, "class=\"switch", "{\"page\":\"%s\",\"n\":1,\"set\":\"%s\",\"on\":false}", &patch);
    CHECK(strstr(patch, "\"off\"") != NULL);
    CHECK(vx_center_layout(center, &css, &length) == VX_OK && length > 0);
    vx_free(patch);
    vx_free(css);
    patch = NULL;
    CHECK(vx_center_dispatch(center, "\xff", 1, &patch, &length) == VX_INVALID_ARGUMENT);
    CHECK(vx_center_dispatch(center, "[[[", 3, &patch, &length) == VX_OK);
    vx_free(patch);
    CHECK(vx_center_done(center, &done) == VX_OK && done == 0);
    CHECK(vx_center_close(center, VX_DISCARD) == VX_OK && accepted(module, 1) == 1);
    CHECK(vx_center_close(center, VX_SAVE) == VX_INVALID_HANDLE);

    CHECK(vx_center_open(module, 390, 844, VX_POPUP, &center) == VX_OK);
    act(center, "class=\"switch", "{\"page\":\"%s\",\"n\":1,\"set\":\"%s\",\"on\":false}", &patch);
    vx_free(patch);
    CHECK(vx_center_close(center, VX_SAVE) == VX_OK && accepted(module, 1) == 0);
    CHECK(vx_center_open(module, 390, 844, VX_POPUP, &center) == VX_OK);
    CHECK(vx_destroy(module) == VX_OK);
    CHECK(vx_center_done(center, &done) == VX_INVALID_HANDLE);
}

static void test_iab(vx_settings* settings) {
    vx_center* center = NULL;
    char* text = NULL;
    size_t length = 0;
    int done = 0;
    int vendor = 0;
    vx_module* module;
    vx_set_number(settings, VX_IAB, 1);
    vx_set_text(settings, VX_LANGUAGE, "fr", 2);
    module = create(settings);
    vx_start(module);
    CHECK(asking(module) == VX_ASK_FIRST_TIME);
    CHECK(vx_center_open(module, 390, 844, VX_PURPOSES, &center) == VX_OK);
    act(center, ">Enregistrer mes choix<", "{\"page\":\"%s\",\"n\":1,\"tap\":\"%s\"}", &text);
    vx_free(text);
    CHECK(vx_center_done(center, &done) == VX_OK && done == 1);
    CHECK(asking(module) == VX_ASK_NOT); /* saved with the tap */
    CHECK(vx_center_close(center, VX_DISCARD) == VX_OK);
    CHECK(vx_accept_all(module) == VX_OK);
    CHECK(vx_vendor_accepted(module, 1015, &vendor) == VX_OK && vendor == 1);
    CHECK(vx_stored_text(module, "IABTCF_TCString", 15, &text, &length) == VX_OK && length > 40);
    vx_free(text);
    CHECK(vx_tcfapi_script(module, VX_TCF_LOADED, &text, &length) == VX_OK);
    CHECK(strstr(text, "\\\"gdprApplies\\\":1") && strstr(text, ",\"tcloaded\");"));
    vx_free(text);
    CHECK(vx_tcfapi_update(module, VX_TCF_CENTER_SHOWN, &text, &length) == VX_OK);
    CHECK(strstr(text, ",\"cmpuishown\");") == text + length - 15);
    vx_free(text);
    CHECK(vx_tcfapi_update(module, 0, &text, &length) == VX_INVALID_ARGUMENT);
    vx_destroy(module);
}

static void* poll_elsewhere(void* module) {
    static vx_result result;
    result = vx_poll((vx_module*)module);
    return &result;
}

static void test_misuse(vx_settings* settings) {
    vx_module* module = NULL;
    vx_module* second = NULL;
    vx_settings* empty = NULL;
    pthread_t thread;
    void* result;
    int answer = 5;
    CHECK(vx_settings_create(NULL) == VX_INVALID_ARGUMENT);
    CHECK(vx_settings_create(&empty) == VX_OK);
    CHECK(vx_create(empty, &module) == VX_INVALID_ARGUMENT && module == NULL);
    CHECK(vx_set_text(empty, 77, "a", 1) == VX_INVALID_ARGUMENT);
    CHECK(vx_set_text(empty, VX_OWNER, NULL, 1) == VX_INVALID_ARGUMENT);
    CHECK(vx_set_text(empty, VX_STORE, "a\0b", 3) == VX_INVALID_ARGUMENT);
    CHECK(vx_set_number(empty, VX_IAB, 2) == VX_INVALID_ARGUMENT);
    CHECK(vx_settings_free(empty) == VX_OK && vx_settings_free(empty) == VX_INVALID_HANDLE);
    CHECK(vx_create(settings, NULL) == VX_INVALID_ARGUMENT);
    CHECK(vx_create((vx_settings*)&answer, &module) == VX_INVALID_HANDLE);
    module = create(settings);
    CHECK(vx_create(settings, &second) == VX_WRONG_STATE && second == NULL);
    CHECK(vx_poll(module) == VX_WRONG_STATE && vx_poll(NULL) == VX_INVALID_HANDLE);
    CHECK(vx_start(module) == VX_OK);
    CHECK(vx_category_accepted(module, 1, NULL) == VX_INVALID_ARGUMENT);
    pthread_create(&thread, NULL, poll_elsewhere, module);
    pthread_join(thread, &result);
    CHECK(*(vx_result*)result == VX_WRONG_THREAD);
    CHECK(vx_destroy(module) == VX_OK && vx_destroy(module) == VX_INVALID_HANDLE);
    CHECK(vx_result_text(99) != NULL);
    vx_free(NULL);
}

/* interface STORE PACKAGED IAB_STORE IAB_PACKAGED */
int main(int count, char** arguments) {
    vx_settings* settings;
    if (count != 5)
        return 2;
    settings = settings_for(arguments[1], arguments[2]);
    test_choices(settings);
    test_center(settings);
    test_misuse(settings);
    vx_settings_free(settings);
    settings = settings_for(arguments[3], arguments[4]);
    test_iab(settings);
    vx_settings_free(settings);
    return failures != 0;
}
