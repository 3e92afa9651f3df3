#include "frame/GlobalConstants.h"

#include "frame/Frame.h"

namespace qvt {

GlobalConstants& globalConstants() noexcept { return globalInstance<GlobalConstants>(); }

}  // namespace qvt
