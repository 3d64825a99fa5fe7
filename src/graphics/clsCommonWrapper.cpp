// clsCommonWrapper: the default style let and its one listener.
#include "graphics/clsCommonWrapper.h"

#include <utility>

namespace {

thread_local std::function<void(int32_t)> t_tooltipStyleListener;

}  // namespace

void clsCommonWrapper::DefaultButtonStyle(int32_t style) {
    SetDefaultButtonStyle(style);
    if (t_tooltipStyleListener) t_tooltipStyleListener(style);
}

void clsCommonWrapper::SetTooltipStyleListener(std::function<void(int32_t)> listener) {
    t_tooltipStyleListener = std::move(listener);
}
