#include "windows/app.h"

namespace windows {

App& App::instance() {
    static App app;
    return app;
}

} // namespace windows
