#pragma once
// Answers the shared message box from a test: the answer runs once the box
// is up and its activation work has run. Gives up after five seconds, so
// that a box that never shows fails the test instead of hanging it.

#include <functional>

class MessageBox;

namespace testenv {

void WhenMessageBoxShown(std::function<void(MessageBox&)> answer);

}  // namespace testenv
