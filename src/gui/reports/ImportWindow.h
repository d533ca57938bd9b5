#pragma once
// frmImport: what to import and from which kind of file. The rules and the import
// itself are core/reports/Import.
#include "core/reports/Import.h"

#include <QDialog>

#include <array>

class QCheckBox;
class QRadioButton;

namespace gelvane {

class ImportWindow : public QDialog {
    Q_OBJECT
public:
    explicit ImportWindow(QWidget *owner);

    // The options as they stand.
    const ImportChoice &choice() const { return m_choice; }

private:
    void readControls();
    void refresh();

    ImportChoice m_choice;
    std::array<QRadioButton *, 2> m_optDataType{};
    std::array<QRadioButton *, kImportFileTypes> m_optFileType{};
    QCheckBox *m_chkBody;
};

// Shows frmImport modally over `owner`; Import closes it and then runs the import on
// `session`, with `showFigure` as the figure window.
void ShowImportWindow(Session &session, QWidget *owner, const FigureWindowOpener &showFigure);

} // namespace gelvane
