/* The program of the README, in C: asks once, keeps the answer, measures only who agreed. */

#include <stdio.h>
#include <string.h>

#include "vxprivacy/c/vxprivacy.h"

static vx_result set_text(vx_settings* settings, vx_text_setting setting, const char* text) {
    return vx_set_text(settings, setting, text, strlen(text));
}

static vx_module* create(void) {
    vx_settings* settings;
    vx_module* module = NULL;
    vx_result result = vx_settings_create(&settings);
    if (result == VX_OK) {
        set_text(settings, VX_STORE, "consent/choices.sqlite");
        set_text(settings, VX_PACKAGED, "resources");
        vx_set_number(settings, VX_SITE, 12); /* your site and privacy identifiers */
        vx_set_number(settings, VX_PRIVACY, 5);
        result = vx_create(settings, &module);
        vx_settings_free(settings);
    }
    if (result != VX_OK)
        fprintf(stderr, "%s\n", vx_result_text(result));
    return module;
}

int main(void) {
    vx_asking asking = VX_ASK_NOT;
    int measuring = 0;
    vx_module* module = create();
    if (module == NULL || vx_start(module) != VX_OK)
        return 1;

    vx_must_ask(module, &asking);
    if (asking != VX_ASK_NOT) {
        printf("May we measure how you use this program? [y/n] ");
        fflush(stdout);
        if (getchar() == 'y')
            vx_accept_all(module);
        else
            vx_refuse_all(module);
    }
    vx_poll(module); /* from your event loop */
    vx_category_accepted(module, 1, &measuring);
    printf(measuring ? "measuring\n" : "not measuring\n");
    vx_destroy(module);
    return 0;
}
