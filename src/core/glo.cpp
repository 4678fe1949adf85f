#include "core/glo.h"

namespace qrn {

Glo glo;

}  // namespace qrn
