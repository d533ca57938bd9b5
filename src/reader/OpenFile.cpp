#include "reader/OpenFile.h"

namespace gelvane {

void OpenFile(Session &, std::string_view) {}

void AddFigureLine(Session &session, const std::string &line, int) {
    session.cmbFigures.push_back(line);
}

void FillMaterialList(Session &) {}

} // namespace gelvane
