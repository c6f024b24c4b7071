#include "tests/engine/Child.h"

#include "engine/EngineError.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velmora::engine::test {

namespace {

int ResultOf(int status) {
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

} // namespace

int Fork(const std::function<int()>& work) {
    const pid_t child = ::fork();
    if (child != 0) {
        return child;
    }
    int result = 99;
    try {
        result = work();
    } catch (const EngineError& error) {
        result = error.Number() & 0xff;
    } catch (const std::exception&) {
        result = 98;
    }
    ::_exit(result);
}

int Wait(int child) {
    int status = 0;
    ::waitpid(child, &status, 0);
    return ResultOf(status);
}

Child::Child(const std::function<void(const Child& self)>& work) {
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends_), 0);
    id_ = Fork([&] {
        ::close(ends_[0]);
        work(*this);
        return 0;
    });
    ::close(ends_[1]);
}

void Child::ReportReady() const {
    static_cast<void>(::send(ends_[1], "x", 1, MSG_NOSIGNAL));
}

void Child::StandStill() const {
    ReportReady();
    char byte = 0;
    if (::read(ends_[1], &byte, 1) != 1) {
        ::_exit(97); // the parent has ended
    }
}

void Child::AwaitReady() const {
    char byte = 0;
    ASSERT_EQ(::read(ends_[0], &byte, 1), 1) << "the child has ended";
}

void Child::GoOn() const {
    EXPECT_EQ(::send(ends_[0], "x", 1, MSG_NOSIGNAL), 1) << "the child has ended";
}

bool Child::IsRunning() {
    ended_ = ended_ || ::waitpid(id_, &status_, WNOHANG) == id_;
    return !ended_;
}

int Child::Result() {
    if (IsRunning()) {
        ::waitpid(id_, &status_, 0);
        ended_ = true;
    }
    return ResultOf(status_);
}

void Child::Kill() {
    if (IsRunning()) {
        ::kill(id_, SIGKILL);
        Result();
    }
    ::close(std::exchange(ends_[0], -1));
}

} // namespace velmora::engine::test
