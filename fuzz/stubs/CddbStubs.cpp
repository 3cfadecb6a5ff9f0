// Stand-ins for the settings and the data file, which cd/CddbLookup.cpp uses
// besides its handling of an answer: the answer harness never calls them,
// they only let the file link without the rest of the program.
#include <cstdlib>

#include "core/Database.h"
#include "core/Settings.h"
#include "core/Statements.h"

namespace settings {
QString GetSetting(const QString&, const QString&) { std::abort(); }
int GetInt(const QString&, int) { std::abort(); }
bool GetTrueFalse(const QString&, bool) { std::abort(); }
QString DefaultOf(const QString&) { std::abort(); }
}  // namespace settings

namespace platform {
SqlTransaction::SqlTransaction(SqlCipherConnection& connection) : connection_(connection) { std::abort(); }
SqlTransaction::~SqlTransaction() = default;
bool SqlTransaction::Commit() { std::abort(); }
}  // namespace platform

std::optional<CdTitle> SelectCdTitleById(Database&, qint32) { std::abort(); }
QList<bool> TakeCdSongSelections(Database&, qint32) { std::abort(); }
bool InsertCdSongs(Database&, qint32, const QList<CdSong>&) { std::abort(); }
bool UpdateCdTitle(Database&, qint32, const QString&, const QString&, const QString&, qint16) { std::abort(); }
