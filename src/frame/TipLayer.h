// TipLayer: the module routine through which controls pass their tips to a live tooltip manager.
#pragma once

#include <cstdint>

#include "common/CtlTypes.h"

// What a tooltip manager offers the routine. The manager registers itself while it lives; the
// registration is per thread, as every window of the library lives on its creator's thread.
class TipLayerSink {
public:
    virtual ~TipLayerSink() = default;
    virtual void SetTip(const CtlString& sTip, int32_t lMaxWidth, const CtlString& sTag) = 0;
    // The text the tooltip shows now.
    virtual CtlString CurrentTipText() const = 0;
};

void RegisterTooltipManager(TipLayerSink* manager) noexcept;
// Only the registered manager can remove itself.
void UnregisterTooltipManager(TipLayerSink* manager) noexcept;
bool IsTooltipManagerAlive() noexcept;

// Passes a control's tip on. Does nothing without a live manager, and nothing when the tip, the
// tooltip's present text and the tag are all empty, so that moves over tipless controls are free.
void PassTipToTooltipLayer(const CtlString& sTip, int32_t lMaxWidth = 300, const CtlString& sTag = CtlString());
