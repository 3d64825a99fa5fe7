#include "text/clsFileIniEx_Row.h"

#include <utility>

std::shared_ptr<clsFileIniEx_Row> clsFileIniEx_Row::Create() {
    return std::shared_ptr<clsFileIniEx_Row>(new clsFileIniEx_Row());
}

std::shared_ptr<clsFileIniEx_Row> clsFileIniEx_Row::Clone(std::shared_ptr<clsFileIniEx_Row> oRow) const {
    if (!oRow) oRow = Create();
    *oRow = *this;
    return oRow;
}
