#include "platform/Services.h"

namespace platform {

Services& TheServices() {
  static Services services;
  return services;
}

void ResetServices() { TheServices() = Services{}; }

}  // namespace platform
