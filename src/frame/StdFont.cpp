#include "frame/StdFont.h"

#include <utility>

StdFont::StdFont(CtlString name, float size, bool bold, bool italic)
    : m_sName(std::move(name)), m_fSize(size), m_iWeight(bold ? 700 : 400), m_bItalic(italic) {}
