#include "tools/vsqexport/progress_bar.h"

#include <cstdio>

#include "standins/host/memory/host_text.h"
#include "tools/vsqinfo/display_text.h"

namespace vsqexport {

namespace {

constexpr int kWidth = 30;
constexpr size_t kLongestTitle = 40;
constexpr std::chrono::milliseconds kBetweenDraws{50};
constexpr char kWipeLine[] = "\r\x1b[K";

}  // namespace

ProgressBar::~ProgressBar() {
    if (drawn_) {
        std::fputs(kWipeLine, stderr);
        std::fflush(stderr);
    }
}

void ProgressBar::update(int percent, const std::wstring& title) {
    const auto now = std::chrono::steady_clock::now();
    if (!visible_ || (drawn_ && now - last_draw_ < kBetweenDraws)) {
        return;
    }
    drawn_ = true;
    last_draw_ = now;

    const int filled = kWidth * percent / 100;
    const std::string bar = std::string(filled, '=') + std::string(kWidth - filled, ' ');
    const std::string shown =
        vsqinfo::display_text(memhost::utf8_from_units(title.substr(0, kLongestTitle)));
    std::fprintf(stderr, "%s[%s] %3d %% %s", kWipeLine, bar.c_str(), percent, shown.c_str());
    std::fflush(stderr);
}

}  // namespace vsqexport
