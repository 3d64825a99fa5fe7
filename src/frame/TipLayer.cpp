#include "frame/TipLayer.h"

namespace {

thread_local bool t_bTooltipManagerAlive = false;
thread_local TipLayerSink* t_manager = nullptr;

}  // namespace

void RegisterTooltipManager(TipLayerSink* manager) noexcept {
    t_manager = manager;
    t_bTooltipManagerAlive = manager != nullptr;
}

void UnregisterTooltipManager(TipLayerSink* manager) noexcept {
    if (t_manager != manager) return;
    t_manager = nullptr;
    t_bTooltipManagerAlive = false;
}

bool IsTooltipManagerAlive() noexcept { return t_bTooltipManagerAlive; }

void PassTipToTooltipLayer(const CtlString& sTip, int32_t lMaxWidth, const CtlString& sTag) {
    if (!t_bTooltipManagerAlive || t_manager == nullptr) return;
    if (sTip.empty() && sTag.empty() && t_manager->CurrentTipText().empty()) return;
    t_manager->SetTip(sTip, lMaxWidth, sTag);
}
