// The number box's texts: a typed text made plain, and laid into a format.
// The input is "text\0format".
#include "controls/NumericFormat.h"
#include "FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QList<QByteArray> pieces = fuzz::Pieces(data, size, 2);
  const QString text = QString::fromUtf8(pieces[0]);
  const QString format = QString::fromUtf8(pieces[1]);
  const QString plain = numeric::UnformatNumeric(text);
  // A plain text is its own plain form.
  if (numeric::UnformatNumeric(plain) != plain) __builtin_trap();
  numeric::NumericValue(plain);
  numeric::FormatNumeric(text, format);
  numeric::FormatMaxLength(format, false);
  numeric::FormatMaxLength(format, true);
  return 0;
}
