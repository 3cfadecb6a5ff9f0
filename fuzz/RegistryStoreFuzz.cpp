// The registry file's reader. Each input is read twice: as it stands, and
// with its last line replaced by a correct count and checksum, so that
// changed bytes inside the file reach the record rules instead of stopping
// at the checksum. A store the reader accepts must write itself out and
// read back the same.
#include "FuzzInput.h"
#include "platform/RegistryStore.h"

namespace {

quint32 Crc32(const QByteArray& bytes) {
  quint32 crc = 0xFFFFFFFFu;
  for (const char ch : bytes) {
    crc ^= quint8(ch);
    for (int k = 0; k < 8; ++k) crc = (crc & 1) ? 0xEDB88320u ^ (crc >> 1) : crc >> 1;
  }
  return crc ^ 0xFFFFFFFFu;
}

void Check(QByteArrayView bytes) {
  const std::optional<RegistryStore> store = RegistryStore::FromBytes(bytes);
  if (!store) return;
  const std::optional<RegistryStore> again = RegistryStore::FromBytes(store->ToBytes());
  if (!again || !(*again == *store)) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray bytes = fuzz::Bytes(data, size);
  Check(bytes);

  // Everything before the last line, sealed again.
  QByteArray body = bytes;
  if (body.endsWith('\n')) body.chop(1);
  body.truncate(body.lastIndexOf('\n') + 1);
  if (body.isEmpty()) return 0;
  body += "End\t" + QByteArray::number(body.count('\n') - 1) + '\t' +
          QByteArray::number(Crc32(body), 16).toUpper().rightJustified(8, '0') + '\n';
  Check(body);
  return 0;
}
