#include "editor/frmEdit.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QShortcut>
#include <QTextDocument>
#include <QVBoxLayout>

#include "calfile/NoteText.h"
#include "editor/InputLimit.h"
#include "gui/NamedWidgets.h"
#include "gui/Twips.h"
#include "store/DateInWords.h"

namespace kelvane {

namespace {

// The smallest page, so that the dialog keeps a familiar size with any font.
constexpr double kPageWidthTwips = 6600;
constexpr double kPageHeightTwips = 4200;
// The tab strip's frame reaches this far beyond the pages.
constexpr double kFrameMarginTwips = 120;

// Every line break the box shows takes as many of the stored note's
// characters as the note's line break.
qsizetype StoredNoteLength(QStringView typed) {
    return typed.size() + typed.count(u'\n') * (kNoteLineBreak.size() - 1);
}

}  // namespace

frmEdit::frmEdit(Store& store, const MonthViewControl& monthView, QWidget* parent)
    : QDialog(parent),
      lblDate(NamedWidget<QLabel>(this, "lblDate")),
      tabEdit(NamedWidget<QTabBar>(this, "tabEdit")),
      Picture1{new QWidget(this), new QWidget(this), new QWidget(this)},
      store_(store),
      schedule_(store.appointments.AppointmentList) {
    setObjectName(QStringLiteral("frmEdit"));
    setWindowTitle(QStringLiteral("Tivrel Edit"));
    setModal(true);
    tabEdit->addTab(QStringLiteral("Outlook"));
    tabEdit->addTab(QStringLiteral("Schedule"));
    tabEdit->addTab(QStringLiteral("Notes"));
    for (QWidget* page : Picture1) {
        page->setObjectName(QStringLiteral("Picture1"));
        page->hide();
    }
    BuildOutlookPage(Picture1[0]);
    BuildSchedulePage(Picture1[1]);
    BuildNotesPage(Picture1[2]);
    cmdOK = NamedButton(this, "cmdOK", QStringLiteral("OK"));
    cmdCancel = NamedButton(this, "cmdCancel", QStringLiteral("Cancel"));
    ArrangePages();
    SetUpKeyboard();
    Connect();
    Form_Load(monthView);
    LimitLengths();
    loaded_ = AsAccepted();
}

void frmEdit::BuildOutlookPage(QWidget* page) {
    Label1 = NamedWidget<QLabel>(page, "Label1", QStringLiteral("Title"));
    txtTitle = NamedWidget<QLineEdit>(page, "txtTitle", QStringLiteral("Title Entry"));
    Colours = new ColourChoiceControls(page, store_.module1.Services().ColourDialog);
    Colours->lblSample->setMinimumHeight(56);
    auto* layout = new QGridLayout(page);
    layout->addWidget(Label1, 0, 0);
    layout->addWidget(txtTitle, 0, 1);
    layout->addWidget(Colours->lblSample, 1, 0, 1, 2);
    layout->addWidget(Colours->Columns, 2, 0, 1, 2);
    layout->setRowStretch(1, 1);
    Label1->setBuddy(txtTitle);
}

void frmEdit::BuildSchedulePage(QWidget* page) {
    Label5 = NamedWidget<QLabel>(page, "Label5", QStringLiteral("Current Schedule:"));
    lstSchedule = NamedWidget<QListWidget>(page, "lstSchedule");
    Label6 = NamedWidget<QLabel>(page, "Label6", QStringLiteral("Sched. No."));
    txtAppointNum = NamedWidget<QLineEdit>(page, "txtAppointNum");
    Label3 = NamedWidget<QLabel>(page, "Label3", QStringLiteral("Start Time"));
    txtStartTime = NamedWidget<QLineEdit>(page, "txtStartTime");
    Label4 = NamedWidget<QLabel>(page, "Label4", QStringLiteral("End Time (optional)"));
    txtEndTime = NamedWidget<QLineEdit>(page, "txtEndTime");
    Label2 = NamedWidget<QLabel>(page, "Label2", QStringLiteral("Description"));
    txtAppDescription = NamedWidget<QLineEdit>(page, "txtAppDescription");
    cmdAddAppointment = NamedButton(page, "cmdAddAppointment", QStringLiteral("Add"));
    cmdDelete = NamedButton(page, "cmdDelete", QStringLiteral("Delete"));
    cmdClear = NamedButton(page, "cmdClear", QStringLiteral("Clear"));
    annSchedule = NamedWidget<Announcer>(page, "annSchedule");
    LayOutSchedulePage(page);
}

void frmEdit::LayOutSchedulePage(QWidget* page) {
    txtAppointNum->setMaximumWidth(
        txtAppointNum->fontMetrics().horizontalAdvance(QStringLiteral("0000")) + 12);
    auto* fields = new QGridLayout;
    fields->addWidget(Label6, 0, 0);
    fields->addWidget(txtAppointNum, 1, 0);
    fields->addWidget(Label3, 0, 1);
    fields->addWidget(txtStartTime, 1, 1);
    fields->addWidget(Label4, 0, 2);
    fields->addWidget(txtEndTime, 1, 2);
    fields->addWidget(Label2, 2, 0, 1, 3);
    fields->addWidget(txtAppDescription, 3, 0, 1, 3);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdAddAppointment);
    buttons->addWidget(cmdDelete);
    buttons->addWidget(cmdClear);
    buttons->addStretch();
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(Label5);
    layout->addWidget(lstSchedule, 1);
    layout->addLayout(fields);
    layout->addLayout(buttons);
    LabelList(Label5, lstSchedule);
    Label6->setBuddy(txtAppointNum);
    Label3->setBuddy(txtStartTime);
    Label4->setBuddy(txtEndTime);
    Label2->setBuddy(txtAppDescription);
}

void frmEdit::BuildNotesPage(QWidget* page) {
    txtNotes = NamedWidget<QPlainTextEdit>(page, "txtNotes");
    // The page's tab names the box on screen; a screen reader needs its own.
    txtNotes->setAccessibleName(QStringLiteral("Notes"));
    lblNoteCount = NamedWidget<QLabel>(page, "lblNoteCount");
    lblNoteCount->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(txtNotes);
    layout->addWidget(lblNoteCount);
}

// The pages share one place inside the tab strip's frame; the date, OK and
// Cancel sit under it.
void frmEdit::ArrangePages() {
    const double dpi = DotsPerInch(this);
    QSize pageSize(TwipsToPixels(kPageWidthTwips, dpi), TwipsToPixels(kPageHeightTwips, dpi));
    for (QWidget* page : Picture1) {
        pageSize = pageSize.expandedTo(page->sizeHint());
    }
    const int margin = TwipsToPixels(kFrameMarginTwips, dpi);
    const int tabsHeight = tabEdit->sizeHint().height();
    const int left = TwipsToPixels(PanelLeftTwips, dpi);
    // Tabs taller than the designed strip push the pages down.
    const int top = std::max(TwipsToPixels(PanelTopTwips, dpi), tabsHeight + margin / 2);
    auto* frame = new QFrame(this);
    frame->setFrameShape(QFrame::StyledPanel);
    frame->setGeometry(left - margin, tabsHeight - 1, pageSize.width() + 2 * margin,
                       top - tabsHeight + pageSize.height() + margin + 1);
    frame->lower();
    tabEdit->setGeometry(left - margin, 0, tabEdit->sizeHint().width(), tabsHeight);
    tabEdit->raise();
    for (QWidget* page : Picture1) {
        page->resize(pageSize);
    }
    const int below = frame->geometry().bottom() + margin;
    const QSize button = cmdCancel->sizeHint().expandedTo(QSize(80, 0));
    const int right = frame->geometry().right();
    cmdCancel->setGeometry(right - button.width(), below, button.width(), button.height());
    cmdOK->setGeometry(right - 2 * button.width() - margin, below, button.width(), button.height());
    lblDate->setGeometry(frame->x(), below, cmdOK->x() - frame->x() - margin, button.height());
    setFixedSize(right + left, below + button.height() + margin);
    pagePosition_ = QPoint(left, top);
}

// Tab goes from the tab strip through the page shown to OK and Cancel; the
// hidden pages' controls are passed over. Ctrl+Tab and Ctrl+Page Down turn to
// the next page, with Shift or Page Up to the one before, as tab strips do.
void frmEdit::SetUpKeyboard() {
    SetTabOrder(QList<QWidget*>{tabEdit, txtTitle} + Colours->TabOrder() +
                QList<QWidget*>{lstSchedule, txtAppointNum, txtStartTime, txtEndTime,
                                txtAppDescription, cmdAddAppointment, cmdDelete, cmdClear, txtNotes,
                                cmdOK, cmdCancel});
    AddPageKeys({QKeySequence(Qt::CTRL | Qt::Key_Tab), QKeySequence(Qt::CTRL | Qt::Key_PageDown)},
                1);
    AddPageKeys({QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab),
                 QKeySequence(Qt::CTRL | Qt::Key_PageUp)},
                -1);
}

void frmEdit::AddPageKeys(const QList<QKeySequence>& keys, int step) {
    for (const QKeySequence& key : keys) {
        connect(new QShortcut(key, this), &QShortcut::activated, this,
                [this, step] { StepPage(step); });
    }
}

// Turns the page round the strip. The keyboard stays on the strip when it was
// there, and otherwise goes to the new page's first control.
void frmEdit::StepPage(int step) {
    const bool onTabs = tabEdit->hasFocus();
    const int count = tabEdit->count();
    const int page = (tabEdit->currentIndex() + step + count) % count;
    tabEdit->setCurrentIndex(page);
    if (!onTabs) {
        FirstControl(page)->setFocus(Qt::TabFocusReason);
    }
}

QWidget* frmEdit::FirstControl(int page) const {
    const std::array<QWidget*, 3> first{txtTitle, lstSchedule, txtNotes};
    return first[static_cast<std::size_t>(page)];
}

void frmEdit::Connect() {
    connect(tabEdit, &QTabBar::currentChanged, this, [this] { tabEdit_Click(); });
    // Selection, not the current row: a list that gains focus makes its first
    // row current without selecting it, and that must not fill the fields.
    connect(lstSchedule, &QListWidget::itemSelectionChanged, this, [this] {
        if (!lstSchedule->selectedItems().isEmpty()) {
            lstSchedule_Click();
        }
    });
    connect(lstSchedule, &QListWidget::itemClicked, this, [this] { lstSchedule_Click(); });
    connect(cmdAddAppointment, &QPushButton::clicked, this, [this] { cmdAddAppointment_Click(); });
    connect(cmdDelete, &QPushButton::clicked, this, [this] { cmdDelete_Click(); });
    connect(cmdClear, &QPushButton::clicked, this, [this] { cmdClear_Click(); });
    connect(txtTitle, &QLineEdit::textChanged, this, [this] { txtTitle_Change(); });
    connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { cmdCancel_Click(); });
}

void frmEdit::Form_Load(const MonthViewControl& monthView) {
    const CalDate& date = store_.calender.CurrentEntryDate;
    lblDate->setText(QString::number(date.Day) + QStringLiteral(" / ") +
                     QString::number(date.Month));
    // "17 / 11" alone gives a listener neither the weekday nor the month's name.
    const QString spoken = DateInWords(monthView, date.Month, date.Day);
    setAccessibleDescription(spoken);
    lblDate->setAccessibleDescription(spoken);
    QString fontName;
    qint16 fontSize = 0;
    monthView.GetFont(fontName, fontSize);
    QFont sampleFont(fontName);
    if (fontSize > 0) {
        sampleFont.setPointSize(fontSize);
    }
    Colours->lblSample->setFont(sampleFont);
    txtNotes->setPlainText(NoteWithLfBreaks(Trim(store_.diary.NoteBuffer.Value())));
    ShowPanel(0);
    store_.module1.EditAccepted = false;
    FillSchedule();
    if (lstSchedule->count() == 0) {
        cmdClear_Click();
    }
    DateEntry& entry = store_.calender.CurrentEntry;
    txtTitle->setText(entry.Title.Trimmed());
    Colours->Attach(entry.TextColour, entry.BackColour);
    ShowPanel(2);
    ShowPanel(0);
    PutKeyboardOnTitle();
}

// The dialog opens with the keyboard where typing is expected, at the end of
// the title with nothing selected: a key typed at once adds to the title and
// never wipes it.
void frmEdit::PutKeyboardOnTitle() {
    txtTitle->setFocus(Qt::OtherFocusReason);
}

// Showing a dialog gives its focus widget the focus Tab gives, and a box given
// that selects its text.
void frmEdit::setVisible(bool visible) {
    QDialog::setVisible(visible);
    if (visible && focusWidget() == txtTitle) {
        txtTitle->deselect();
        txtTitle->setCursorPosition(static_cast<int>(txtTitle->text().size()));
    }
}

// The boxes take no more than their fields hold, so OK never cuts what was
// typed. Set after loading: the texts loaded are what the fields hold.
void frmEdit::LimitLengths() {
    LimitInput(txtTitle, TitleLength);
    LimitInput(txtAppDescription, decltype(Appointment::Description)::Length);
    LimitInput(txtNotes, NoteLength, StoredNoteLength);
    connect(txtNotes->document(), &QTextDocument::contentsChanged, this,
            [this] { ShowNoteCount(); });
    ShowNoteCount();
}

void frmEdit::ShowNoteCount() {
    const qsizetype used = StoredNoteLength(txtNotes->toPlainText());
    lblNoteCount->setText(QStringLiteral("%1 / %2").arg(used).arg(NoteLength));
    lblNoteCount->setAccessibleName(
        QStringLiteral("Note length: %1 of %2 characters").arg(used).arg(NoteLength));
}

void frmEdit::tabEdit_Click() {
    ShowPanel(tabEdit->currentIndex());
}

void frmEdit::ShowPanel(int index) {
    if (index < 0 || index >= static_cast<int>(Picture1.size())) {
        return;
    }
    if (shownPanel_ >= 0) {
        Picture1[static_cast<std::size_t>(shownPanel_)]->hide();
    }
    QWidget* page = Picture1[static_cast<std::size_t>(index)];
    page->move(pagePosition_);
    page->show();
    shownPanel_ = index;
    const QSignalBlocker quiet(tabEdit);
    tabEdit->setCurrentIndex(index);
}

void frmEdit::txtTitle_Change() {
    const QString title = Trim(txtTitle->text());
    Colours->lblSample->setText(title.isEmpty() ? QStringLiteral("Marrowby 2000") : title);
}

void frmEdit::cmdOK_Click() {
    store_.module1.EditAccepted = true;
    const CalendarFileDate accepted = AsAccepted();
    store_.calender.CurrentEntry.Title = accepted.Entry.Title;
    store_.diary.NoteBuffer = accepted.Note;
    store_.module1.CalendarDirty = true;
    accept();
}

CalendarFileDate frmEdit::AsAccepted() const {
    CalendarFileDate date;
    date.Month = store_.calender.CurrentEntryDate.Month;
    date.Day = store_.calender.CurrentEntryDate.Day;
    date.Entry = store_.calender.CurrentEntry;
    date.Entry.Title = Trim(txtTitle->text());
    date.Note = FixedText<NoteLength>(NoteFromLfBreaks(txtNotes->toPlainText())).Value();
    const qint16 count = store_.appointments.CountAppointments();
    for (int entry = 1; entry <= count; ++entry) {
        date.Schedule.push_back(schedule_[entry]);
    }
    return date;
}

void frmEdit::done(int result) {
    answered_ = true;
    QDialog::done(result);
}

void frmEdit::cmdCancel_Click() {
    reject();
}

// Cancel, Escape and the close box all end here.
void frmEdit::reject() {
    store_.module1.EditAccepted = false;
    QDialog::reject();
}

}  // namespace kelvane
