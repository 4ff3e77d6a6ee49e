/* The C interface where things go wrong: a kill, a disk that takes nothing, callers on other threads. */

#define _POSIX_C_SOURCE 200112L

#include <pthread.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include "tests/c/support.h"

static const char* const SWITCH = "{\"page\":\"%s\",\"n\":1,\"set\":\"%s\",\"on\":false}";

/* Runs in a process of its own, which is killed while the user stands in the center. */
static void killed_in_the_center(vx_settings* settings) {
    vx_center* center = NULL;
    char* patch = NULL;
    const pid_t child = fork();
    if (child == 0) {
        vx_module* module = create(settings);
        CHECK(vx_start(module) == VX_OK);
        CHECK(vx_center_open(module, 390, 844, VX_POPUP, &center) == VX_OK);
        act(center, "class=\"switch", SWITCH, &patch);
        if (failures == 0)
            kill(getpid(), SIGKILL);
        _exit(1);
    } else {
        int status = 0;
        CHECK(waitpid(child, &status, 0) == child);
        CHECK(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    }
}

static void test_kill(vx_settings* settings) {
    vx_module* module;
    killed_in_the_center(settings);
    module = create(settings);
    CHECK(vx_start(module) == VX_OK && asking(module) == VX_ASK_FIRST_TIME);
    CHECK(accepted(module, 1) == 0);
    CHECK(vx_accept_all(module) == VX_OK);
    CHECK(vx_destroy(module) == VX_OK);

    killed_in_the_center(settings); /* what was chosen before stays */
    module = create(settings);
    CHECK(vx_start(module) == VX_OK && asking(module) == VX_ASK_NOT && accepted(module, 1) == 1);
    CHECK(vx_destroy(module) == VX_OK);
}

/* Whether there is a choice that has not reached the disk, and a reason. */
static int waits(vx_module* module) {
    double since = -1;
    char* problem = NULL;
    size_t length = 0;
    CHECK(vx_state(module, VX_PENDING_SINCE, &since) == VX_OK);
    CHECK(vx_problem_text(module, VX_STORE_PROBLEM, &problem, &length) == VX_OK);
    CHECK((since > 0) == (length > 0));
    vx_free(problem);
    return since > 0;
}

static void test_full_disk(vx_settings* settings) {
    struct rlimit before;
    struct rlimit none;
    vx_module* module = create(settings);
    int tries = 0;
    CHECK(vx_start(module) == VX_OK && asking(module) == VX_ASK_FIRST_TIME && !waits(module));
    signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &before);
    none = before;
    none.rlim_cur = 0;
    setrlimit(RLIMIT_FSIZE, &none);
    CHECK(vx_accept_all(module) == VX_OK && accepted(module, 1) == 1);
    CHECK(asking(module) == VX_ASK_NOT && waits(module));
    setrlimit(RLIMIT_FSIZE, &before);
    for (tries = 0; tries < 300 && waits(module); ++tries) {
        const struct timespec pause = {0, 100 * 1000 * 1000};
        CHECK(vx_poll(module) == VX_OK);
        if (waits(module))
            nanosleep(&pause, NULL);
    }
    CHECK(!waits(module));
    CHECK(vx_destroy(module) == VX_OK);
    module = create(settings);
    CHECK(vx_start(module) == VX_OK && asking(module) == VX_ASK_NOT && accepted(module, 1) == 1);
    CHECK(vx_destroy(module) == VX_OK);
}

/* Not even root makes files there. */
static void test_no_place(const char* packaged) {
    vx_settings* settings = settings_for("/proc/choices.sqlite", packaged);
    vx_module* module = create(settings);
    CHECK(vx_start(module) == VX_OK && asking(module) == VX_ASK_FIRST_TIME);
    CHECK(vx_accept_all(module) == VX_OK && accepted(module, 1) == 1 && waits(module));
    CHECK(vx_poll(module) == VX_OK && asking(module) == VX_ASK_NOT);
    CHECK(vx_destroy(module) == VX_OK);
    vx_settings_free(settings);
}

/* The child has the module's memory, but not its worker. */
static void test_fork(vx_settings* settings) {
    vx_module* module = create(settings);
    vx_center* center = NULL;
    pid_t child;
    int status = 0;
    CHECK(vx_start(module) == VX_OK);
    CHECK(vx_center_open(module, 390, 844, VX_POPUP, &center) == VX_OK);
    child = fork();
    if (child == 0) {
        alarm(20);
        CHECK(vx_refuse_all(module) == VX_WRONG_THREAD && vx_poll(module) == VX_WRONG_THREAD);
        CHECK(vx_center_close(center, VX_SAVE) == VX_WRONG_THREAD);
        CHECK(vx_destroy(module) == VX_WRONG_THREAD);
        _exit(failures != 0);
    }
    CHECK(waitpid(child, &status, 0) == child && status == 0);
    CHECK(vx_destroy(module) == VX_OK);
}

enum { THREADS = 16, ROUNDS = 20 };

static const char* own_store;
static pthread_barrier_t barrier;

/* One of the threads that want a module at once; gives how often it was not answered as it should. */
static void* create_at_once(void* made) {
    int round;
    vx_settings* settings = settings_for(own_store, "");
    for (round = 0; round < ROUNDS; ++round) {
        vx_module* module = NULL;
        vx_result result;
        pthread_barrier_wait(&barrier);
        result = vx_create(settings, &module);
        if (result == VX_OK)
            ++((int*)made)[round];
        else if (result != VX_WRONG_STATE)
            ((int*)made)[round] = THREADS;
        pthread_barrier_wait(&barrier);
        if (module && vx_destroy(module) != VX_OK)
            ((int*)made)[round] = THREADS;
    }
    vx_settings_free(settings);
    return NULL;
}

static void test_creation_at_once(const char* store) {
    static int made[THREADS][ROUNDS];
    pthread_t threads[THREADS];
    int each;
    int round;
    own_store = store;
    pthread_barrier_init(&barrier, NULL, THREADS);
    for (each = 0; each < THREADS; ++each)
        pthread_create(&threads[each], NULL, create_at_once, made[each]);
    for (each = 0; each < THREADS; ++each)
        pthread_join(threads[each], NULL);
    pthread_barrier_destroy(&barrier);
    for (round = 0; round < ROUNDS; ++round) {
        int modules = 0;
        for (each = 0; each < THREADS; ++each)
            modules += made[each][round];
        CHECK(modules == 1);
    }
}

/* What the application's thread has at the moment, for others to call with. */
static struct {
    vx_settings* settings;
    vx_module* module;
    vx_center* center;
    int over;
} shown;
static pthread_mutex_t guard = PTHREAD_MUTEX_INITIALIZER;

static void show(vx_settings* settings, vx_module* module, vx_center* center, int over) {
    pthread_mutex_lock(&guard);
    shown.settings = settings;
    shown.module = module;
    shown.center = center;
    shown.over = over;
    pthread_mutex_unlock(&guard);
}

static int refused(vx_result result) {
    return result == VX_WRONG_THREAD || result == VX_INVALID_HANDLE;
}

/* Calls all that is not for other threads, until it is over; null when each call was refused. */
static void* call_elsewhere(void* unused) {
    static int wrong = 1;
    int fine = 1;
    (void)unused;
    for (;;) {
        vx_settings* settings;
        vx_module* module;
        vx_center* center;
        vx_module* other = NULL;
        vx_center* opened = NULL;
        char* text = NULL;
        size_t length = 0;
        double number = 0;
        unsigned long revision = 0;
        int answer = 0;
        int over;
        pthread_mutex_lock(&guard);
        settings = shown.settings;
        module = shown.module;
        center = shown.center;
        over = shown.over;
        pthread_mutex_unlock(&guard);
        if (over)
            return fine ? NULL : &wrong;
        fine = fine && refused(vx_set_text(settings, VX_OWNER, "Somebody else", 13)) &&
               refused(vx_set_number(settings, VX_IAB, 1)) &&
               refused(vx_set_log(settings, NULL, NULL)) && refused(vx_create(settings, &other)) &&
               refused(vx_settings_free(settings)) && refused(vx_start(module)) &&
               refused(vx_poll(module)) && refused(vx_on_event(module, NULL, NULL)) &&
               refused(vx_on_wake_up(module, NULL, NULL)) &&
               refused(vx_on_open(module, NULL, NULL)) && refused(vx_must_ask(module, &answer)) &&
               refused(vx_accept_all(module)) && refused(vx_refuse_all(module)) &&
               refused(vx_category_accepted(module, 1, &answer)) &&
               refused(vx_vendor_accepted(module, 1, &answer)) &&
               refused(vx_stored_text(module, "a", 1, &text, &length)) &&
               refused(vx_state(module, VX_LAST_SAVED, &number)) &&
               refused(vx_problem_text(module, VX_STORE_PROBLEM, &text, &length)) &&
               refused(vx_tcfapi_script(module, VX_TCF_LOADED, &text, &length)) &&
               refused(vx_tcfapi_update(module, VX_TCF_LOADED, &text, &length)) &&
               refused(vx_center_open(module, 390, 844, VX_POPUP, &opened)) &&
               refused(vx_center_page(center, &text, &length)) &&
               refused(vx_center_layout(center, &text, &length)) &&
               refused(vx_center_dispatch(center, "{}", 2, &text, &length)) &&
               refused(vx_center_revision(center, &revision)) &&
               refused(vx_center_done(center, &answer)) &&
               refused(vx_center_close(center, VX_SAVE)) && refused(vx_destroy(module));
    }
}

static void test_other_threads(const char* store, const char* packaged) {
    pthread_t threads[THREADS];
    int each;
    show(NULL, NULL, NULL, 0);
    for (each = 0; each < THREADS; ++each)
        pthread_create(&threads[each], NULL, call_elsewhere, NULL);
    for (each = 0; each < ROUNDS; ++each) {
        vx_settings* settings = settings_for(store, packaged);
        vx_module* module = create(settings);
        vx_center* center = NULL;
        show(settings, module, NULL, 0);
        CHECK(vx_start(module) == VX_OK && asking(module) == VX_ASK_FIRST_TIME);
        CHECK(vx_center_open(module, 390, 844, VX_POPUP, &center) == VX_OK);
        show(settings, module, center, 0);
        CHECK(vx_poll(module) == VX_OK && vx_center_close(center, VX_DISCARD) == VX_OK);
        CHECK(vx_destroy(module) == VX_OK && vx_settings_free(settings) == VX_OK);
    }
    show(NULL, NULL, NULL, 1);
    for (each = 0; each < THREADS; ++each) {
        void* wrong = NULL;
        pthread_join(threads[each], &wrong);
        CHECK(wrong == NULL);
    }
}

/* faults STORE PACKAGED: each part has a store of its own, whose path begins so. */
int main(int count, char** arguments) {
    char store[3][4096];
    vx_settings* settings;
    int each;
    if (count < 3 || strlen(arguments[1]) > 4000)
        return 2;
    for (each = 0; each < 3; ++each)
        sprintf(store[each], "%s.%d", arguments[1], each);
    settings = settings_for(store[0], arguments[2]);
    test_kill(settings);
    test_fork(settings);
    vx_settings_free(settings);
    settings = settings_for(store[1], arguments[2]);
    test_full_disk(settings);
    vx_settings_free(settings);
    test_no_place(arguments[2]);
    test_creation_at_once(store[2]);
    test_other_threads(store[2], arguments[2]);
    return failures != 0;
}
