#pragma once
// Answers a window of the program from a test while the code under test
// waits for it (a modal window): the step runs once the window is up. A
// step that leaves the window open fails the test, and the window is
// closed, so that nothing hangs.

#include <gtest/gtest.h>

#include <QTimer>
#include <QWidget>
#include <functional>

#include "core/WindowRegistry.h"

template <typename Window>
class WindowAnswer {
 public:
  explicit WindowAnswer(std::function<void(Window&)> step) : step_(std::move(step)) {
    QObject::connect(&poll_, &QTimer::timeout, [this] { Look(); });
    poll_.start(10);
  }
  ~WindowAnswer() {
    poll_.stop();
    if (QWidget* left = Windows().Find(Window::Id)) left->close();
  }
  // Whether the window came and the step ran.
  bool Ran() const { return ran_; }

 private:
  void Look() {
    auto* window = Windows().Get<Window>();
    if (ran_) {
      // Looked at again a while after the step: still up means stuck.
      if (window && window->isVisible() && ++looksAfter_ > 500) {
        ADD_FAILURE() << "the window stayed open after the answer";
        window->close();
      }
      return;
    }
    if (!window || !window->isVisible()) return;
    ran_ = true;
    step_(*window);
  }

  std::function<void(Window&)> step_;
  QTimer poll_;
  bool ran_ = false;
  int looksAfter_ = 0;
};
