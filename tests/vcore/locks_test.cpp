#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <string>
#include <thread>

#include "vcore/deadline.h"
#include "vcore/log_sink.h"
#include "vcore/mutex.h"
#include "vcore/sys_cond.h"
#include "vcore/sys_sem.h"
#include "vcore/sys_thread.h"
#include "vcore/sys_time.h"

namespace {

const timespec kPast{1, 0};

// What a thread that does not hold the mutex gets.
int lockElsewhere(pthread_mutex_t* mutex) {
    int result = -1;
    std::thread([&] { result = sys_mutex_timedlock(mutex, &kPast); }).join();
    return result;
}

TEST(Mutex, IsFreeAfterAsManyUnlocksAsLocks) {
    vcore::Mutex mutex;
    EXPECT_EQ(mutex.lock() | mutex.lock() | mutex.unlock(), 0);
    EXPECT_EQ(lockElsewhere(mutex.storage()), ETIMEDOUT);
    EXPECT_EQ(mutex.unlock(), 0);
    EXPECT_EQ(mutex.unlock(), EPERM);
    try {
        const vcore::AutoLock outer(&mutex);
        const vcore::AutoLock inner(&mutex);
        const vcore::AutoLock none(nullptr);
        EXPECT_EQ(lockElsewhere(mutex.storage()), ETIMEDOUT);
        throw std::runtime_error("leaves the scope");
    } catch (const std::runtime_error&) {
        EXPECT_EQ(lockElsewhere(mutex.storage()), 0);
    }
}

TEST(Condition, TellsSignalTimeOutAndFailureApart) {
    const timespec deadline = deadlineAfter({7, 600000}, 1500);
    EXPECT_TRUE(deadline.tv_sec == 9 && deadline.tv_nsec == 100000000);
    vcore::Mutex mutex;
    pthread_cond_t* const cond = sys_cond_create();
    ASSERT_EQ(sys_cond_init(cond, nullptr), 0);
    const timespec invalid{1, -1};
    mutex.lock();
    EXPECT_EQ(sys_cond_timedwait(cond, mutex.storage(), &invalid), 1);
    EXPECT_EQ(sys_cond_timedwait_ms(cond, mutex.storage(), 20), 100);
    std::thread signaller([&] {
        const vcore::AutoLock lock(&mutex);
        EXPECT_EQ(sys_cond_signal(cond) | sys_cond_broadcast(cond), 0);
    });
    EXPECT_EQ(sys_cond_timedwait_ms(cond, mutex.storage(), 60000), 0);
    mutex.unlock();
    signaller.join();
    EXPECT_EQ(sys_cond_free(cond), 0);
}

int valueOf(sys_sem_t* semaphore) {
    int value = -1;
    return sys_sem_getvalue(semaphore, &value) == 0 ? value : -1;
}

TEST(Semaphore, CountsUnlessBypassed) {
    sys_sem_t* const semaphore = sys_sem_create(0, 1);
    EXPECT_EQ(sys_sem_wait(semaphore), 0);
    EXPECT_EQ(sys_sem_trywait(semaphore), -1);
    EXPECT_EQ(sys_sem_post(semaphore) | sys_sem_post(semaphore), 0);
    EXPECT_EQ(valueOf(semaphore), 2);
    semaphore->bypass = 1;
    EXPECT_EQ(sys_sem_post(semaphore) | sys_sem_wait(semaphore) | sys_sem_trywait(semaphore), 0);
    EXPECT_EQ(valueOf(semaphore), -1);
    semaphore->bypass = 0;
    EXPECT_EQ(valueOf(semaphore), 2);
    EXPECT_EQ(sys_sem_free(semaphore), 0);
    EXPECT_EQ(sys_sem_create(0, ~0U), nullptr) << "more than a semaphore counts";
}

TEST(Semaphore, OpensByNameAsFlagsSay) {
    const std::string name = "/vcore_test_" + std::to_string(getpid());
    std::string opened;
    for (const unsigned flags : {0, 2, 3, 3, 1, 0}) {
        sys_sem_t* const semaphore = sys_sem_open(name.c_str(), flags, 0600, 5);
        opened += std::to_string(valueOf(semaphore)) + ' ';
        EXPECT_EQ(sys_sem_close(semaphore) | sys_sem_free(semaphore), semaphore == nullptr);
    }
    EXPECT_EQ(opened, "-1 -1 5 -1 5 5 ");
    sem_unlink(name.c_str());
}

TEST(Thread, RunsAndGivesItsResult) {
    char argument = 0;
    void* (*const starts[])(void*) = {[](void* given) { return given; },
                                      [](void* given) -> void* { sys_thread_exit(given); }};
    for (const auto start : starts) {
        sys_thread_t* const thread =
            sys_thread_create(nullptr, start, &argument, 7, "a name of more than 16", 1);
        EXPECT_TRUE(thread->word == 7 && std::string(thread->name, 16) == "a name of more t");
        void* result = nullptr;
        EXPECT_EQ(sys_thread_join(thread, &result) | sys_thread_free(thread), 0);
        EXPECT_EQ(result, &argument);
    }
    const auto idle = [](void* given) { return pause(), given; };
    pthread_attr_t* const attr = sys_thread_attr_create();
    EXPECT_EQ(sys_thread_attr_init(attr) | sys_thread_attr_set_detached(attr, 1), 0);
    EXPECT_EQ(sys_thread_attr_set_detached(attr, 2), 1);
    sys_thread_t* const detached = sys_thread_create(attr, idle, nullptr, 0, nullptr, 0);
    sys_thread_t* const joinable = sys_thread_create(nullptr, idle, nullptr, 0, nullptr, 0);
    EXPECT_EQ(sys_thread_equal(joinable, joinable) & sys_thread_equal(joinable, nullptr), 1);
    EXPECT_EQ(sys_thread_equal(joinable, detached) | sys_sleep_ms(1), 0);
    EXPECT_EQ(sys_thread_join(detached, nullptr), 1);
    EXPECT_EQ(sys_thread_cancel(detached) | sys_thread_cancel(joinable) |
                  sys_thread_join(joinable, nullptr) | sys_thread_free(detached) |
                  sys_thread_free(joinable) | sys_thread_attr_destroy(attr),
              0);
}

TEST(Runtime, RefusesNull) {
    vcore::Mutex mutex;
    sys_sem_t empty{};
    EXPECT_EQ(sys_mutex_lock(nullptr) & sys_mutex_timedlock(mutex.storage(), nullptr) &
                  sys_cond_wait(nullptr, mutex.storage()) & sys_cond_free(nullptr) &
                  sys_sem_wait(nullptr) & sys_sem_wait(&empty) & sys_sem_close(&empty) &
                  sys_thread_join(nullptr, nullptr) & sys_thread_attr_set_detached(nullptr, 0) &
                  sys_gettimeofday(nullptr, nullptr) & log_sink_set_level(nullptr, 0) &
                  log_sink_open_file(nullptr, "log", "a") & log_sink_close_file(nullptr) &
                  log_sink_get_file(nullptr, nullptr, nullptr) & log_sink_flush(nullptr) &
                  log_sink_add_callback(nullptr, nullptr) & log_sink_attach_stream(nullptr, stderr),
              1);
    EXPECT_TRUE(sys_sem_open(nullptr, 1, 0600, 0) == nullptr && log_sink_destroy(nullptr) == 0);
}

}  // namespace
