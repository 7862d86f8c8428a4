#include <gmock/gmock.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <thread>

#include "vcore/base/clock.h"
#include <mediacheckd/vcore/mutex.h>
#include <mediacheckd/vcore/sys_cond.h>
#include <mediacheckd/vcore/sys_sem.h>
#include <mediacheckd/vcore/sys_thread.h>
#include <mediacheckd/vcore/sys_time.h>

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
    EXPECT_FALSE(mutex.lock() || mutex.lock() || mutex.unlock());
    EXPECT_EQ(lockElsewhere(mutex.storage()), ETIMEDOUT);
    EXPECT_EQ(mutex.unlock(), 0);
    EXPECT_EQ(mutex.unlock(), EPERM);
    {
        const vcore::AutoLock outer(&mutex);
        const vcore::AutoLock inner(&mutex);
        const vcore::AutoLock none(nullptr);
        EXPECT_EQ(lockElsewhere(mutex.storage()), ETIMEDOUT);
    }
    EXPECT_EQ(lockElsewhere(mutex.storage()), 0);
    EXPECT_EQ(sys_mutex_lock(nullptr) & sys_mutex_timedlock(mutex.storage(), nullptr), 1);
}

TEST(Mutex, KeepsTheAttributesItIsGiven) {
    pthread_mutexattr_t* const attr = sys_mutexattr_create();
    pthread_mutex_t* const mutex = sys_mutex_create();
    EXPECT_FALSE(sys_mutexattr_init(attr) ||
                 pthread_mutexattr_settype(attr, PTHREAD_MUTEX_ERRORCHECK) ||
                 sys_mutex_init(mutex, attr) || sys_mutexattr_destroy(attr));
    EXPECT_EQ(sys_mutex_trylock(mutex), 0);
    EXPECT_EQ(sys_mutex_trylock(mutex), EBUSY);
    EXPECT_EQ(sys_mutex_lock(mutex), EDEADLK);
    EXPECT_FALSE(sys_mutex_unlock(mutex) || sys_mutex_destroy(mutex));
}

TEST(Condition, TellsSignalTimeOutAndFailureApart) {
    const timespec deadline = vcore::deadlineAfter({7, 600000}, 1500);
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
        EXPECT_FALSE(sys_cond_signal(cond) || sys_cond_broadcast(cond));
    });
    EXPECT_EQ(sys_cond_timedwait_ms(cond, mutex.storage(), 60000), 0);
    signaller.join();
    signaller = std::thread([&] {
        const vcore::AutoLock lock(&mutex);
        sys_cond_signal(cond);
    });
    EXPECT_EQ(sys_cond_wait(cond, mutex.storage()), 0);
    mutex.unlock();
    signaller.join();
    EXPECT_EQ(sys_cond_free(cond), 0);
}

int valueOf(sys_sem_t* semaphore) {
    int value = -1;
    return sys_sem_getvalue(semaphore, &value) == 0 ? value : -1;
}

TEST(Semaphore, CountsUnlessBypassedAndOpensAsFlagsSay) {
    sys_sem_t* const semaphore = sys_sem_create(0, 1);
    EXPECT_EQ(sys_sem_wait(semaphore), 0);
    EXPECT_EQ(sys_sem_trywait(semaphore), -1);
    EXPECT_EQ(sys_sem_post(semaphore), 0);
    semaphore->bypass = 1;
    EXPECT_FALSE(sys_sem_post(semaphore) || sys_sem_wait(semaphore) || sys_sem_wait(semaphore));
    EXPECT_EQ(valueOf(semaphore), -1);
    semaphore->bypass = 0;
    EXPECT_EQ(valueOf(semaphore), 1);
    EXPECT_EQ(sys_sem_free(semaphore), 0);
    EXPECT_EQ(sys_sem_create(0, ~0U), nullptr) << "more than a semaphore counts";
    EXPECT_EQ(sys_sem_open(nullptr, 1, 0600, 0), nullptr);

    const std::string name = "/vcore_test_" + std::to_string(getpid());
    std::string values;
    for (const unsigned flags : {0U, 2U, 3U, 3U, 1U, 0U}) {
        sys_sem_t* const named = sys_sem_open(name.c_str(), flags, 0600, 5);
        values += std::to_string(valueOf(named)) + ' ';
        EXPECT_EQ(sys_sem_close(named) || sys_sem_free(named), named == nullptr);
    }
    EXPECT_EQ(values, "-1 -1 5 -1 5 5 ");
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
        EXPECT_EQ(sys_thread_equal(thread, thread) & sys_thread_equal(thread, nullptr), 1);
        void* result = nullptr;
        EXPECT_FALSE(sys_thread_join(thread, &result) || sys_thread_free(thread));
        EXPECT_EQ(result, &argument);
    }
    pthread_t self{};
    EXPECT_TRUE(sys_thread_self(&self) == 0 && pthread_equal(self, pthread_self()) != 0);
    const auto sleep = [](void*) -> void* {
        for (;;) {
            pause();
        }
    };
    sys_thread_t* const canceled = sys_thread_create(nullptr, sleep, nullptr, 0, nullptr, 0);
    void* result = nullptr;
    EXPECT_FALSE(sys_thread_cancel(canceled) || sys_thread_join(canceled, &result) ||
                 sys_thread_free(canceled));
    EXPECT_EQ(result, PTHREAD_CANCELED);

    pthread_attr_t* const attr = sys_thread_attr_create();
    EXPECT_FALSE(sys_thread_attr_init(attr) || sys_thread_attr_set_detached(attr, 1));
    sys_thread_t* const detached = sys_thread_create(
        attr, [](void*) -> void* { return nullptr; }, nullptr, 0, nullptr, 0);
    EXPECT_EQ(sys_thread_detach(detached), 1) << "it is already";
    EXPECT_EQ(sys_thread_free(detached), 0);
    EXPECT_EQ(sys_thread_attr_set_detached(attr, 2), 1);
    EXPECT_EQ(sys_thread_attr_destroy(attr), 0);
}

TEST(Time, PassesWhileOneSleeps) {
    timeval before{};
    timeval after{};
    EXPECT_FALSE(sys_gettimeofday(&before, nullptr) || sys_sleep_ms(1020) ||
                 sys_gettimeofday(&after, nullptr));
    timersub(&after, &before, &after);
    EXPECT_GE(static_cast<double>(after.tv_sec) + static_cast<double>(after.tv_usec) * 1e-6, 1.02);
}

TEST(Calls, OfNothingGiveOne) {
    pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
    pthread_cond_t cond = PTHREAD_COND_INITIALIZER;
    int value = 0;
    const int results[] = {sys_mutex_init(nullptr, nullptr),
                           sys_mutex_trylock(nullptr),
                           sys_mutex_unlock(nullptr),
                           sys_mutex_timedlock(nullptr, &kPast),
                           sys_mutex_destroy(nullptr),
                           sys_mutexattr_init(nullptr),
                           sys_mutexattr_destroy(nullptr),
                           sys_cond_init(nullptr, nullptr),
                           sys_cond_wait(nullptr, &mutex),
                           sys_cond_wait(&cond, nullptr),
                           sys_cond_timedwait(nullptr, &mutex, &kPast),
                           sys_cond_timedwait(&cond, nullptr, &kPast),
                           sys_cond_timedwait(&cond, &mutex, nullptr),
                           sys_cond_timedwait_ms(nullptr, &mutex, 1),
                           sys_cond_timedwait_ms(&cond, nullptr, 1),
                           sys_cond_signal(nullptr),
                           sys_cond_broadcast(nullptr),
                           sys_cond_free(nullptr),
                           sys_sem_wait(nullptr),
                           sys_sem_trywait(nullptr),
                           sys_sem_post(nullptr),
                           sys_sem_getvalue(nullptr, &value),
                           sys_sem_close(nullptr),
                           sys_sem_free(nullptr),
                           sys_thread_free(nullptr),
                           sys_thread_self(nullptr),
                           sys_thread_equal(nullptr, nullptr),
                           sys_thread_cancel(nullptr),
                           sys_thread_detach(nullptr),
                           sys_thread_join(nullptr, nullptr),
                           sys_thread_attr_init(nullptr),
                           sys_thread_attr_set_detached(nullptr, 0),
                           sys_thread_attr_destroy(nullptr),
                           sys_gettimeofday(nullptr, nullptr)};
    EXPECT_THAT(results, testing::Each(1));
}

}  // namespace
