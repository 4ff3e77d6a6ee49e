/* Consent management for applications in C, and in every language that can call C.
 *
 *     vx_settings* settings;
 *     vx_module* module;
 *     vx_asking asking;
 *
 *     vx_settings_create(&settings);
 *     vx_set_text(settings, VX_STORE, "consent/choices.sqlite", 22);
 *     vx_set_text(settings, VX_PACKAGED, "resources", 9);
 *     vx_set_number(settings, VX_SITE, 12);
 *     vx_set_number(settings, VX_PRIVACY, 5);
 *     if (vx_create(settings, &module) == VX_OK && vx_start(module) == VX_OK) {
 *         vx_must_ask(module, &asking);
 *         if (asking != VX_ASK_NOT)
 *             ...                     ask, then vx_accept_all, vx_refuse_all or a privacy center
 *         for (;;)                    the application's loop
 *             vx_poll(module);
 *     }
 *     vx_settings_free(settings);
 *     vx_destroy(module);
 *
 * What holds for all of it:
 *
 * - Functions say how it went. When that is not VX_OK, nothing was done, and what would have been
 *   handed out is as it was before.
 * - Texts are UTF-8. One that is handed in has a length in bytes, needs no zero at its end, and is
 *   read only during the call. One that is handed out is a copy, with a zero behind its last byte
 *   that `length` does not count; it is the caller's, who gives it to vx_free.
 * - A handle that was never made, or is gone, is an error and not a crash, as long as no new one
 *   stands at its address.
 * - All, settings too, is called on the thread that calls vx_create, the application's, but for
 *   vx_free, vx_result_text and what tells of static files, which any thread may call. Nothing
 *   waits for the network. A choice is durable when the function that saves it returns.
 * - A module that was made before a fork is the parent's: in the child it answers VX_WRONG_THREAD.
 *   A child that wants one of its own is forked while there is none.
 * - Functions of the application's are called on that thread too, in the middle of something, but
 *   for the wake-up. They may ask the module (vx_must_ask, vx_category_accepted and the like);
 *   whatever else they call answers VX_WRONG_STATE. They must not unwind past their end, by longjmp
 *   or an exception. `context` is handed back to them as it was given.
 * - A number that names a choice is never given another meaning; a later version may have more. It
 *   travels as int, so that a wrong one is an error.
 */
#ifndef VXPRIVACY_C_VXPRIVACY_H
#define VXPRIVACY_C_VXPRIVACY_H

#include <stddef.h>

#ifndef VX_API
#if defined(_WIN32)
#define VX_API __declspec(dllimport)
#elif defined(__GNUC__)
#define VX_API __attribute__((visibility("default")))
#else
#define VX_API
#endif
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** How a call went. */
typedef int vx_result;
enum {
    VX_OK = 0,
    VX_INVALID_ARGUMENT = 1, /**< a null pointer, a number out of range, a text that is not UTF-8 */
    VX_INVALID_HANDLE = 2,   /**< a handle that is null, gone or of another kind */
    VX_WRONG_THREAD = 3,     /**< not the thread, or the process, that made what it is of */
    VX_WRONG_STATE = 4, /**< too early, too late, or from within a function of the application's */
    VX_NO_MEMORY = 5,
    VX_FAILED = 6 /**< anything else; the log says more */
};

/** What went wrong, in English; for any number. It lives as long as the program. */
VX_API const char* vx_result_text(vx_result result);

/** Gives back a text that was handed out; nothing for a null pointer. */
VX_API void vx_free(void* text);

/* Settings, made before the module. Of texts VX_STORE alone must be set. */

typedef struct vx_settings vx_settings;

typedef int vx_text_setting;
enum {
    VX_STORE = 1,              /**< path of the file of choices; it is made, with its directory */
    VX_PACKAGED = 2,           /**< directory of the documents that ship with the application */
    VX_CONFIGURATION_HOST = 3, /**< "https://cdn.example.com": scheme, host, no final slash */
    VX_VENDOR_LIST_HOST = 4,   /**< the same, of the IAB vendor list; there is none by default */
    VX_COLLECTOR_HOST = 5,     /**< the same, of what takes the consent beacons */
    VX_USER_AGENT = 6,         /**< named in beacons and requests */
    VX_LOG_FILE = 7,           /**< path of a log file beside standard error; none by default */
    VX_LANGUAGE = 8, /**< of the IAB texts, "fr"; a code that is unknown changes nothing */
    VX_OWNER = 9     /**< the application's name, for the title bar of a privacy center */
};

typedef int vx_number_setting;
enum {
    VX_SITE = 1,             /**< identifiers of the application; 0 by default */
    VX_PRIVACY = 2,          /**< 0 by default */
    VX_CONTAINER = 3,        /**< 0 by default */
    VX_IAB = 4,              /**< 1: the IAB's framework, with vendors and a TC string; else 0 */
    VX_LOG_LEVEL = 5,        /**< lines below it are left out: 1, the default, to 4, problems */
    VX_SWITCHES_START_ON = 6 /**< how switches stand where nothing is saved: 1, the default, or 0 */
};

/** Takes a line of the log, of a level from 1 to 4. `line` is good for the call. */
typedef void (*vx_log_function)(void* context, int level, const char* line, size_t length);

VX_API vx_result vx_settings_create(vx_settings** settings);
/** The module keeps what it needs; the settings may go once it is made. */
VX_API vx_result vx_settings_free(vx_settings* settings);
/** VX_INVALID_ARGUMENT for a text with a zero in it too, which no path or address can have. */
VX_API vx_result vx_set_text(vx_settings* settings, vx_text_setting setting, const char* text,
                             size_t length);
VX_API vx_result vx_set_number(vx_settings* settings, vx_number_setting setting, int number);
/** The log goes there and nowhere else; null: to standard error again. */
VX_API vx_result vx_set_log(vx_settings* settings, vx_log_function log, void* context);

/* The module. There is one at a time. */

typedef struct vx_module vx_module;

/** What an application is told. The choices themselves are asked for. */
typedef int vx_event;
enum {
    VX_CONSENT_UPDATED = 1,    /**< consent was saved, restored at start-up, or taken back */
    VX_CONSENT_OUTDATED = 2,   /**< the saved consent is too old: ask again */
    VX_SIGNIFICANT_CHANGE = 3, /**< the publisher says that much changed: ask again */
    VX_CATEGORIES_CHANGED = 4 /**< a new configuration differs in something that concerns consent */
};

typedef void (*vx_event_function)(void* context, vx_event event);
/** Called on another thread: wake the application's loop, so that it calls vx_poll; no more. */
typedef void (*vx_wake_up_function)(void* context);
/** Opens an address of a privacy center: http, https or mailto. Good for the call. */
typedef void (*vx_open_function)(void* context, const char* address, size_t length);

/** Opens the store. VX_WRONG_STATE while there is a module; VX_INVALID_ARGUMENT without VX_STORE.
 */
VX_API vx_result vx_create(const vx_settings* settings, vx_module** module);
/** Ends the module, and a privacy center that is open, which then saves nothing. Takes less than
    100 ms. */
VX_API vx_result vx_destroy(vx_module* module);

/* Null: nobody is called any more. Set the first two before vx_start. */

VX_API vx_result vx_on_event(vx_module* module, vx_event_function on_event, void* context);
VX_API vx_result vx_on_wake_up(vx_module* module, vx_wake_up_function wake_up, void* context);
/** Without one, the page opens its links itself. */
VX_API vx_result vx_on_open(vx_module* module, vx_open_function open, void* context);

/** Start-up, once: restores what was saved. The functions below ask for it. */
VX_API vx_result vx_start(vx_module* module);
/** Takes in what arrived from the network, and tries again what could not be written. From the
    application's loop; cheap when there is nothing to do. */
VX_API vx_result vx_poll(vx_module* module);

/* Choices */

/** Whether the user must be asked, and why. */
typedef int vx_asking;
enum {
    VX_ASK_NOT = 0,
    VX_ASK_FIRST_TIME = 1, /**< there is no choice yet */
    VX_ASK_OUTDATED = 2,   /**< the choice is too old; it holds until there is another one */
    VX_ASK_CHANGED = 3     /**< a change of the configuration asks for it; the same */
};

VX_API vx_result vx_must_ask(vx_module* module, vx_asking* asking);
VX_API vx_result vx_accept_all(vx_module* module);
VX_API vx_result vx_refuse_all(vx_module* module);
/** `accepted` becomes 1 or 0. An unknown category is not accepted. In IAB mode the consent of
    purpose n is category 10000 + 2n - 1, its legitimate interest 10000 + 2n. */
VX_API vx_result vx_category_accepted(vx_module* module, int category, int* accepted);
/** The same of a vendor; the consent of IAB vendor n is 1000 + 2n - 1, its legitimate interest
    1000 + 2n. */
VX_API vx_result vx_vendor_accepted(vx_module* module, int vendor, int* accepted);
/** What the store holds under a key, "IABTCF_TCString" for instance; null where there is nothing.
 */
VX_API vx_result vx_stored_text(vx_module* module, const char* key, size_t key_length, char** text,
                                size_t* length);

/* Status, from memory */

typedef int vx_state_number;
enum {
    VX_CONSENT_STATE = 1,   /**< 0 undecided, 1 given, 2 refused */
    VX_LAST_SAVED = 2,      /**< ms since 1970, UTC; 0: never */
    VX_PENDING_SINCE = 3,   /**< when the oldest change was made that is not durable; 0: all is */
    VX_WAITING_BEACONS = 4, /**< how many */
    VX_OLDEST_BEACON = 5    /**< when it was made; 0: none waits */
};

typedef int vx_problem;
enum {
    VX_STORE_PROBLEM = 1,    /**< why the store could not be read or written at the last attempt */
    VX_NETWORK_PROBLEM = 2,  /**< why the last request failed that did */
    VX_DOCUMENT_PROBLEMS = 3 /**< of documents, a line each, its name first */
};

VX_API vx_result vx_state(vx_module* module, vx_state_number which, double* number);
/** In English; empty where there is none. */
VX_API vx_result vx_problem_text(vx_module* module, vx_problem which, char** text, size_t* length);

/* The privacy center, as a page for a web view or browser. The application carries the page and its
   files there; then, for each thing that the user does, an event from it and a patch back. */

typedef struct vx_center vx_center;

/** Which screen an IAB privacy center begins with; another center has one screen. */
typedef int vx_screen;
enum { VX_POPUP = 0, VX_PURPOSES = 1, VX_VENDORS = 2 };

/** Opens a privacy center of this size, in points. There is one at a time. */
VX_API vx_result vx_center_open(vx_module* module, double width, double height, vx_screen first,
                                vx_center** center);
/** The page, as text/html, of the screen as it is now; to be served under
    vx_content_security_policy. */
VX_API vx_result vx_center_page(vx_center* center, char** html, size_t* length);
/** Its generated style sheet, which it knows as "layout.css". Ask for it after the page. */
VX_API vx_result vx_center_layout(vx_center* center, char** css, size_t* length);
/** Does what the user did, and hands out the patch that answers. The page posts its events to
    "event", or sends them by a message channel of the web view named `privacy`. */
VX_API vx_result vx_center_dispatch(vx_center* center, const char* event, size_t event_length,
                                    char** patch, size_t* patch_length);
/** Another number whenever other pages than the sender's are to be told. */
VX_API vx_result vx_center_revision(vx_center* center, unsigned long* revision);
/** Whether the user has accepted, refused or saved by a button of the center: 1 or 0. That was
   saved with the tap, and the center is to be closed. */
VX_API vx_result vx_center_done(vx_center* center, int* done);

typedef int vx_closing;
enum {
    VX_SAVE = 1,   /**< saves as the switches stand, touched or not */
    VX_DISCARD = 2 /**< saves nothing: the user is asked again where that must be */
};

VX_API vx_result vx_center_close(vx_center* center, vx_closing closing);

/* For pages in the application's own web views, whose scripts ask __tcfapi for the consent of IAB
   mode. docs/web-views.md says what the web view does with these, and what pages hear. Not within a
   save, which has not stored everything yet. */

/** What the privacy center does. */
typedef int vx_tcf_event;
enum {
    VX_TCF_LOADED = 1,              /**< it is not shown; for whatever else has changed */
    VX_TCF_CENTER_SHOWN = 2,        /**< it is shown, first or again */
    VX_TCF_USER_ACTION_COMPLETE = 3 /**< the user's choice was saved */
};

/** To be run at the start of each page from now on; VX_TCF_CENTER_SHOWN while the center is on the
    screen, else VX_TCF_LOADED. */
VX_API vx_result vx_tcfapi_script(vx_module* module, vx_tcf_event event, char** script,
                                  size_t* length);
/** To be evaluated in the page that is shown. */
VX_API vx_result vx_tcfapi_update(vx_module* module, vx_tcf_event event, char** script,
                                  size_t* length);

/* What pages need beside their own; part of the library, as long as it is loaded. */

/** The file of that number, from 0; no more files: VX_INVALID_ARGUMENT. The name ("surface.css")
   and media type end with a zero. */
VX_API vx_result vx_static_file(size_t number, const char** name, const char** media_type,
                                const char** content, size_t* length);
/** For the header Content-Security-Policy of a page. */
VX_API const char* vx_content_security_policy(void);

#ifdef __cplusplus
}
#endif

#endif
