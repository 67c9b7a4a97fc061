#include "plugins/3dsmax/export/options.h"

namespace Qor {

Options::Options(Interface* the_host) : host(the_host) {}

}  // namespace Qor
