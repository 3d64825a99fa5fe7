// ComFontPicture: the bridge between the platform's font and picture objects and StdFont/StdPicture.
#pragma once

#include <memory>

#include "com/ComPrerequisites.h"

class StdFont;

namespace tc::com {

// A StdFont that came from (or went out as) a platform font object keeps that object: the same
// host object comes back on a get, and this re-reads its members into the StdFont, so that a host
// that changed Font.Bold makes the control see it. Nothing happens for a font of no such object.
void SyncFontFromHost(const std::shared_ptr<StdFont>& font);

// The empty VARIANT that members returning "nothing" hand back.
inline VARIANT EmptyVariant() noexcept {
    VARIANT v;
    ::VariantInit(&v);
    return v;
}

}  // namespace tc::com
