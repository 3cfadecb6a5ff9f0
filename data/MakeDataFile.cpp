// Build tool: makes the encrypted data file from SQL text files.
//
//   MakeDataFile OUTPUT FILE.sql...
//
// The files run in the given order into a new database keyed with the
// program's password. The result is written beside OUTPUT first and moved in
// place only when every statement succeeded, so a failed build never leaves
// a half-made data file behind.

#include <sqlcipher/sqlite3.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "core/DataFileKey.h"

namespace {

bool ReadWholeFile(const char* path, std::string& text) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  std::ostringstream buffer;
  buffer << in.rdbuf();
  text = buffer.str();
  return true;
}

bool Run(sqlite3* db, const std::string& sql, const char* what) {
  char* message = nullptr;
  if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &message) == SQLITE_OK) return true;
  std::fprintf(stderr, "MakeDataFile: %s: %s\n", what, message ? message : "failed");
  sqlite3_free(message);
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: MakeDataFile OUTPUT FILE.sql...\n");
    return 2;
  }
  const std::string output = argv[1];
  const std::string partial = output + ".part";
  std::remove(partial.c_str());

  sqlite3* db = nullptr;
  if (sqlite3_open_v2(partial.c_str(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr) !=
      SQLITE_OK) {
    std::fprintf(stderr, "MakeDataFile: cannot create %s\n", partial.c_str());
    sqlite3_close(db);
    return 1;
  }
  bool ok = sqlite3_key(db, DataFilePassword, int(sizeof DataFilePassword - 1)) == SQLITE_OK;
  ok = ok && Run(db, "BEGIN", "begin");
  for (int i = 2; ok && i < argc; ++i) {
    std::string sql;
    if (!ReadWholeFile(argv[i], sql)) {
      std::fprintf(stderr, "MakeDataFile: cannot read %s\n", argv[i]);
      ok = false;
      break;
    }
    ok = Run(db, sql, argv[i]);
  }
  ok = ok && Run(db, "COMMIT", "commit") && Run(db, "VACUUM", "vacuum");
  if (sqlite3_close(db) != SQLITE_OK) ok = false;

  if (!ok || std::rename(partial.c_str(), output.c_str()) != 0) {
    std::remove(partial.c_str());
    std::fprintf(stderr, "MakeDataFile: %s not made\n", output.c_str());
    return 1;
  }
  return 0;
}
