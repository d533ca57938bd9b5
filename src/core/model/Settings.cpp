#include "core/model/Settings.h"

namespace gelvane {

const std::string &Settings::FolderOfKind(int kind) const {
    switch (kind) {
    case 0:
        return CR2Folder;
    case 1:
        return PZ2Folder;
    case 2:
        return PP2Folder;
    case 3:
        return HR2Folder;
    case 4:
        return CM2Folder;
    case 5:
        return FC2Folder;
    case 6:
        return HD2Folder;
    default:
        return LT2Folder;
    }
}

} // namespace gelvane
