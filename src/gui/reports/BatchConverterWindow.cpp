#include "gui/reports/BatchConverterWindow.h"

#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "gui/WidgetText.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDropEvent>
#include <QFile>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>
#include <QUrl>
#include <QVBoxLayout>

namespace gelvane {

namespace {

struct OptionText {
    const char *Tip;
    const char *Label;
};

constexpr OptionText kOptionTexts[] = {
    {"Selected files will be converted into Poser 5 format", " Convert into P5 format"},
    {"Selected files will be converted into Poser 4 format", " Convert into P4 format"},
    {"A copy of the file will be saved in Poser 5 format", " Save a copy in P5 format (as filename_P5)"},
    {"A copy of the file will be saved in Poser 4 format", " Save a copy in P4 format (as filename_P4)"},
};

bool IsUserInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

std::vector<std::string> LocalFiles(const QMimeData *data) {
    std::vector<std::string> paths;
    for (const QUrl &url : data->urls())
        if (url.isLocalFile())
            paths.push_back(QFile::encodeName(url.toLocalFile()).toStdString());
    return paths;
}

} // namespace

BatchConverterWindow::BatchConverterWindow(Session &session, QWidget *owner)
    : QDialog(owner), m_session(session), m_batch(LoadBatchConverter(session.settings())) {
    setObjectName("frmBatchConverter");
    setWindowTitle("P4 <-> P5 batch converter");
    setAttribute(Qt::WA_DeleteOnClose);
    setModal(false);

    m_ListView1 = Named(new QTreeWidget(this), "ListView1");
    m_ListView1->setHeaderLabels({"File name", "Operation"});
    m_ListView1->setRootIsDecorated(false);
    m_ListView1->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_ListView1->header()->setStretchLastSection(false);
    m_ListView1->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_ListView1->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    m_ListView1->viewport()->setAcceptDrops(true);
    m_ListView1->viewport()->installEventFilter(this);

    auto *options = new QVBoxLayout;
    options->addWidget(Named(new QLabel("Operation for selected file(s):", this), "Label1"));
    for (int i = 0; i < 4; ++i) {
        m_Option[i] =
            Named(new QRadioButton(kOptionTexts[i].Label, this), QString("Option%1").arg(i + 1), kOptionTexts[i].Tip);
        connect(m_Option[i], &QRadioButton::clicked, this, [this, i] { Option_Click(i + 1); });
        options->addWidget(m_Option[i]);
    }
    options->addStretch(1);

    auto button = [this](const char *name, const char *caption, const char *tip) {
        return Named(new QPushButton(caption, this), name, tip);
    };
    QPushButton *command1 = button("Command1", "Add file(s)...", "Add file(s) to the list");
    m_Command2 = button("Command2", "Remove selected file(s)", "Remove selected files from the list");
    m_Command3 = button("Command3", "Select all", "Select all files");
    m_Command4 = button("Command4", "Run Batch", "Execute batch operations");
    QPushButton *command5 = button("Command5", "Cancel", "Exit without running the batch conversion");
    connect(command1, &QPushButton::clicked, this, &BatchConverterWindow::Command1_Click);
    connect(m_Command2, &QPushButton::clicked, this, &BatchConverterWindow::Command2_Click);
    connect(m_Command3, &QPushButton::clicked, this, &BatchConverterWindow::Command3_Click);
    connect(m_Command4, &QPushButton::clicked, this, &BatchConverterWindow::Command4_Click);
    connect(command5, &QPushButton::clicked, this, &QDialog::close);
    for (QPushButton *b : {command1, m_Command2, m_Command3, m_Command4, command5})
        b->setAutoDefault(false);

    auto *buttons = new QVBoxLayout;
    for (QPushButton *b : {command1, m_Command2, m_Command3})
        buttons->addWidget(b);
    buttons->addStretch(1);
    buttons->addWidget(m_Command4);
    buttons->addWidget(command5);

    auto *layout = new QGridLayout(this);
    layout->addWidget(m_ListView1, 0, 0, 1, 2);
    layout->addLayout(options, 1, 0);
    layout->addLayout(buttons, 1, 1);
    layout->setRowStretch(0, 1);
    layout->setColumnStretch(0, 1);
    resize(720, 480);
    refresh();
}

void BatchConverterWindow::refresh() {
    m_ListView1->clear();
    for (const BatchRow &row : m_batch.ListView1) {
        auto *item = new QTreeWidgetItem(m_ListView1, {QFile::decodeName(row.Path.c_str()), Latin1(row.Operation)});
        item->setSelected(row.Selected);
    }
    for (QWidget *control :
         {static_cast<QWidget *>(m_Command2), static_cast<QWidget *>(m_Command3), static_cast<QWidget *>(m_Command4)})
        control->setEnabled(m_batch.ControlsEnabled);
    for (int i = 0; i < 4; ++i) {
        m_Option[i]->setEnabled(m_batch.ControlsEnabled);
        m_Option[i]->setChecked(m_batch.Option == i + 1);
    }
}

void BatchConverterWindow::readSelection() {
    for (int i = 0; i < m_ListView1->topLevelItemCount() && i < static_cast<int>(m_batch.ListView1.size()); ++i)
        m_batch.ListView1[static_cast<size_t>(i)].Selected = m_ListView1->topLevelItem(i)->isSelected();
}

void BatchConverterWindow::DropFiles(const std::vector<std::string> &paths) {
    readSelection();
    gelvane::DropFiles(m_session, m_batch, paths);
    refresh();
}

void BatchConverterWindow::Command1_Click() {
    readSelection();
    AddFiles(m_session, m_batch);
    refresh();
}

void BatchConverterWindow::Command2_Click() {
    readSelection();
    RemoveSelected(m_batch);
    refresh();
}

void BatchConverterWindow::Command3_Click() {
    SelectAll(m_batch);
    refresh();
}

void BatchConverterWindow::Option_Click(int option) {
    readSelection();
    OptionClick(m_batch, option);
    refresh();
}

void BatchConverterWindow::Command4_Click() {
    readSelection();
    // Neither this window nor the main window takes input while the run lets events through.
    m_running = true;
    qApp->installEventFilter(this);
    RunBatch(m_session, m_batch);
    qApp->removeEventFilter(this);
    m_running = false;
    refresh();
    emit sessionChanged();
}

bool BatchConverterWindow::eventFilter(QObject *watched, QEvent *event) {
    if (m_running) {
        const auto *widget = qobject_cast<QWidget *>(watched);
        if (widget && IsUserInput(event->type()) && (widget->window() == this || widget->window() == parentWidget())) {
            event->ignore();
            return true;
        }
        return false;
    }
    if (watched != m_ListView1->viewport())
        return false;
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove: {
        auto *drag = static_cast<QDragMoveEvent *>(event);
        if (drag->mimeData()->hasUrls())
            drag->acceptProposedAction();
        return true;
    }
    case QEvent::Drop: {
        auto *drop = static_cast<QDropEvent *>(event);
        drop->acceptProposedAction();
        DropFiles(LocalFiles(drop->mimeData()));
        return true;
    }
    default:
        return false;
    }
}

void BatchConverterWindow::closeEvent(QCloseEvent *event) {
    if (m_running)
        event->ignore();
    else
        QDialog::closeEvent(event);
}

void BatchConverterWindow::keyPressEvent(QKeyEvent *event) {
    if (!m_running)
        QDialog::keyPressEvent(event);
}

} // namespace gelvane
