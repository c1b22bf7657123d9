// CKivDpi platform probe off Windows: 96 dpi; the combo-box metrics are not measurable, so
// CKivDpi uses the Windows defaults scaled to the dpi.
#include "CKivDpi.h"

namespace kivdpi_platform {
int queryDpi() { return 96; }
bool measureComboBox(int, int&, int&) { return false; }
}  // namespace kivdpi_platform
