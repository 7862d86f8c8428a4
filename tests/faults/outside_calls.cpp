// Calls what the core offers that needs memory, threads, semaphores or files; prints the results.
#include <syslog.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <mediacheckd/vcore/card_id.h>
#include <mediacheckd/vcore/daemon_init.h>
#include <mediacheckd/vcore/log_sink.h>
#include <mediacheckd/vcore/mutex.h>
#include <mediacheckd/vcore/sys_cond.h>
#include <mediacheckd/vcore/sys_sem.h>
#include <mediacheckd/vcore/sys_thread.h>

namespace {

bool sFailed = false;

void tell(const char* what, bool done) {
    std::printf("%s %s\n", what, done ? "done" : "failed");
    sFailed = sFailed || !done;
}

bool logs() {
    log_sink_t* const sink = log_sink_create();
    const bool opened = log_sink_open_file(sink, "/tmp/log", "w") == 0;
    log_sink_set_outputs(sink, LOG_OUT_FILE | LOG_OUT_CALLBACK);
    const bool added = log_sink_add_callback(sink, [](const char*) {}) == 0;
    log_sink_set_level(sink, ~0U);
    log_sink_set_category_mask(sink, 3);
    const bool written = log_sink_printf(sink, 3, 1, "line") == 0;
    log_sink_destroy(sink);
    return opened && added && written;
}

bool locks() {
    pthread_mutex_t* const mutex = sys_mutex_create();
    const bool made = sys_mutex_init(mutex, nullptr) == 0;
    const timespec past{1, 0};
    const bool locked = made && sys_mutex_timedlock(mutex, &past) == 0;
    pthread_cond_t* const cond = sys_cond_create();
    const bool inited = sys_cond_init(cond, nullptr) == 0;
    const bool waited =
        inited && locked && sys_cond_timedwait_ms(cond, mutex, 1) == SYS_COND_TIMED_OUT;
    sys_mutex_unlock(mutex);
    sys_cond_free(cond);
    sys_mutex_destroy(mutex);
    return waited;
}

bool counts(sys_sem_t* semaphore) {
    int value = 0;
    const bool counted = sys_sem_wait(semaphore) == 0 && sys_sem_post(semaphore) == 0 &&
                         sys_sem_trywait(semaphore) == 0 &&
                         sys_sem_getvalue(semaphore, &value) == 0;
    if (semaphore != nullptr && semaphore->ownsStorage == 0) {
        sys_sem_close(semaphore);
    }
    sys_sem_free(semaphore);
    return counted;
}

bool runs() {
    pthread_attr_t* const attr = sys_thread_attr_create();
    const bool made = sys_thread_attr_init(attr) == 0;
    sys_thread_t* const thread =
        made ? sys_thread_create(
                   attr, [](void* given) { return given; }, attr, 0, "name", 0)
             : nullptr;
    void* result = nullptr;
    const bool joined = sys_thread_join(thread, &result) == 0 && result == attr;
    sys_thread_free(thread);
    if (made) {
        sys_thread_attr_destroy(attr);
    } else {
        free(attr);
    }
    return joined;
}

bool identifies() {
    char identity[CARD_ID_SIZE];
    return getCardIDStr(identity) == 0;
}

}  // namespace

int main() {
    openlog("outside_calls", 0, LOG_USER);
    tell("log", logs());
    tell("locks", locks());
    tell("semaphore", counts(sys_sem_create(0, 1)));
    tell("named semaphore", counts(sys_sem_open("/outside_calls", SYS_SEM_CREATE, 0600, 1)));
    sem_unlink("/outside_calls");
    tell("thread", runs());
    tell("identity", identifies());
    std::fflush(stdout);
    tell("daemon", daemon_init_ext(0) == 0);
    return sFailed ? 1 : 0;
}
