#pragma once
// frmBatchConverter: the list of pose files with their operations, modeless beside the
// main window. The rules are core/reports/BatchConverter; this window reads its controls,
// calls them and redraws.
#include "core/reports/BatchConverter.h"

#include <QDialog>

#include <array>

class QPushButton;
class QRadioButton;
class QTreeWidget;

namespace gelvane {

class Session;

class BatchConverterWindow : public QDialog {
    Q_OBJECT
public:
    // Owned by `owner`, the main window; deleted when closed, which forgets LastBatchFolder.
    BatchConverterWindow(Session &session, QWidget *owner);

    const BatchConverter &state() const { return m_batch; }
    // Files dropped on ListView1.
    void DropFiles(const std::vector<std::string> &paths);

signals:
    // A run has changed the main window's model.
    void sessionChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void refresh();
    void readSelection();
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void Option_Click(int option);

    Session &m_session;
    BatchConverter m_batch;
    QTreeWidget *m_ListView1;
    std::array<QRadioButton *, 4> m_Option{};
    QPushButton *m_Command2, *m_Command3, *m_Command4;
    bool m_running = false;
};

} // namespace gelvane
