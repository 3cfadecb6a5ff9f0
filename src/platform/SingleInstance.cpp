#include "platform/SingleInstance.h"

#include <QDir>
#include <QLockFile>
#include <QStandardPaths>

namespace platform {

SingleInstance::SingleInstance(const QString& name) {
  QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  if (folder.isEmpty()) folder = QDir::tempPath();
  QDir().mkpath(folder);
  lock_ = std::make_unique<QLockFile>(folder + "/" + name + ".lock");
  // A lock left by a crashed instance is taken over (QLockFile checks that
  // its process is gone).
  acquired_ = lock_->tryLock(0);
}

SingleInstance::~SingleInstance() {
  if (acquired_) lock_->unlock();
}

bool SingleInstance::Acquired() const { return acquired_; }

}  // namespace platform
