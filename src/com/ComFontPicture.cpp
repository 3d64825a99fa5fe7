#include "com/ComConvert.h"

namespace tc::com {

std::shared_ptr<StdFont> FromFontDisp(IFontDisp*) { throw ComFailure{E_NOTIMPL}; }
IFontDisp* ToFontDisp(const std::shared_ptr<StdFont>&) { throw ComFailure{E_NOTIMPL}; }
std::shared_ptr<StdPicture> FromPictureDisp(IPictureDisp*) { throw ComFailure{E_NOTIMPL}; }
IPictureDisp* ToPictureDisp(const std::shared_ptr<StdPicture>&) { throw ComFailure{E_NOTIMPL}; }

}  // namespace tc::com
