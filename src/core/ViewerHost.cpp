#include "core/ViewerHost.h"

#include "core/WindowRegistry.h"

ViewerHost* TheViewerHost() { return dynamic_cast<ViewerHost*>(Windows().Find(WindowId::MainForm)); }
