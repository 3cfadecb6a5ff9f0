#pragma once
// Windows that take over the screen (the folder chooser, the delete
// verification) switch the browser's wheel off while they are up, and put
// it back as it was when they go.

void SuspendMouseWheel();
void ResumeMouseWheel();
