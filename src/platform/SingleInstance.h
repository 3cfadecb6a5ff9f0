#pragma once
// Makes sure only one Vistrel runs for a user: a lock file in the user's
// runtime folder, held for the life of the program.

#include <QString>
#include <memory>

class QLockFile;

namespace platform {

class SingleInstance {
 public:
  explicit SingleInstance(const QString& name);
  ~SingleInstance();
  // False when another running instance holds the lock.
  bool Acquired() const;

 private:
  std::unique_ptr<QLockFile> lock_;
  bool acquired_ = false;
};

}  // namespace platform
