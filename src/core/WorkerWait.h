#pragma once
// Long file work (a copy, a pass of a wipe) runs on a thread of its own
// while the user-interface thread waits in a local event loop: the windows
// keep painting and the timers keep running, so a copy of gigabytes does
// not freeze the program. The user's mouse and key input is held back until
// the work is done, so that nothing the user does reaches a file half-way
// through; it is delivered afterwards, not lost.

#include <QEventLoop>
#include <QMetaObject>
#include <atomic>
#include <thread>
#include <type_traits>

// Runs work() on a worker thread and returns its result once it is done.
// The work must not touch windows or the program-wide state.
template <typename Work>
std::invoke_result_t<Work> RunWhileWindowsPaint(Work work) {
  using Result = std::invoke_result_t<Work>;
  QEventLoop loop;
  std::atomic<bool> done = false;
  Result result{};
  std::thread worker([&] {
    result = work();
    done = true;
    // Queued: it reaches the loop once it runs, even if the work ended
    // before the loop started; a loop never started drops it with itself.
    QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
  });
  if (!done) loop.exec(QEventLoop::ExcludeUserInputEvents);
  worker.join();
  return result;
}
