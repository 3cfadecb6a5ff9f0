#pragma once
// Answers a message box from a test: the answer runs once the box is up and
// its activation work has run. A box that does not come within five
// seconds, or that the answer leaves open for five seconds, fails the test
// at once, and a box left up is unloaded, so that nothing hangs.

#include <functional>

class MessageBox;

namespace testenv {

void WhenMessageBoxShown(std::function<void(MessageBox&)> answer);

// Ends the watches still pending at the end of a test, failing it for each.
void FinishMessageBoxWatches();

}  // namespace testenv
