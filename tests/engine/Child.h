#pragma once

#include <functional>

namespace velmora::engine::test {

// Runs `work` in a child process, which ends with its result, or with the low byte of the number of the engine error
// that it throws. Returns the child's id. Call it only while this process has no database open: the store would take
// this process's locks for the child's.
int Fork(const std::function<int()>& work);
// Waits for a child: its exit code, or -signal.
int Wait(int child);

// A child process that stands still where its work says so. Killed in the end.
class Child {
public:
    explicit Child(const std::function<void(const Child& self)>& work);
    ~Child() { Kill(); }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    // For the child: reports that it is ready, and waits until it may go on.
    void StandStill() const;
    void ReportReady() const;

    // For the parent. Returns once the child is ready; fails the test when the child has ended instead.
    void AwaitReady() const;
    void GoOn() const;
    bool IsRunning();
    // Waits for its end: 0, the low byte of the number of an engine error, or -signal.
    int Result();
    void Kill();

private:
    int ends_[2] = {-1, -1}; // the parent's and the child's end of the channel between the two
    int id_ = 0;
    int status_ = 0;
    bool ended_ = false;
};

} // namespace velmora::engine::test
