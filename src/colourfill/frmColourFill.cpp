#include "colourfill/frmColourFill.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "gui/NamedWidgets.h"

namespace kelvane {

frmColourFill::frmColourFill(Store& store, MonthViewControl& monthView, QWidget* parent)
    : QDialog(parent),
      Label2(NamedWidget<QLabel>(this, "Label2", QStringLiteral("From"))),
      lstDateFrom(NamedWidget<QListWidget>(this, "lstDateFrom")),
      txtDateTo(NamedWidget<QLineEdit>(this, "txtDateTo")),
      Label1(NamedWidget<QLabel>(this, "Label1", QStringLiteral("Units"))),
      txtUnit(NamedWidget<QLineEdit>(this, "txtUnit", QStringLiteral("1"))),
      optUnit{NamedWidget<QRadioButton>(this, "optUnit", QStringLiteral("Dayly")),
              NamedWidget<QRadioButton>(this, "optUnit", QStringLiteral("Weekly"))},
      Label4(NamedWidget<QLabel>(this, "Label4", QStringLiteral("Fill What?"))),
      chkFill{NamedWidget<QCheckBox>(this, "chkFill", QStringLiteral("Edited")),
              NamedWidget<QCheckBox>(this, "chkFill", QStringLiteral("Un-Edited"))},
      Colours(new ColourChoiceControls(this, store.module1.Services().ColourDialog)),
      cmdDoIt(NamedButton(this, "cmdDoIt", QStringLiteral("Do It!"))),
      cmdCancel(NamedButton(this, "cmdCancel", QStringLiteral("Cancel"))),
      store_(store),
      monthView_(monthView) {
    setObjectName(QStringLiteral("frmColourFill"));
    setWindowTitle(QStringLiteral("Colour Fill"));
    setModal(true);
    BuildControls();
    SetUpKeyboard();
    Form_Load();
    Connect();
}

// The run's settings on the left, what to fill and the colours on the right,
// the buttons under them.
void frmColourFill::BuildControls() {
    auto* group = new QButtonGroup(this);
    group->addButton(optUnit[0], 0);
    group->addButton(optUnit[1], 1);
    txtDateTo->setReadOnly(true);
    lstDateFrom->setMaximumHeight(lstDateFrom->fontMetrics().height() * 3);
    txtUnit->setMaximumWidth(txtUnit->fontMetrics().horizontalAdvance(QStringLiteral("00000")) +
                             12);
    Colours->lblSample->setMinimumHeight(48);
    // The sample takes any height to spare; the colour controls keep theirs.
    Colours->Columns->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);

    QGridLayout* run = RunLayout();

    auto* what = new QHBoxLayout;
    what->addWidget(Label4);
    what->addWidget(chkFill[0]);
    what->addWidget(chkFill[1]);
    what->addStretch();
    auto* colours = new QVBoxLayout;
    colours->addLayout(what);
    colours->addWidget(Colours->lblSample, 1);
    colours->addWidget(Colours->Columns);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdDoIt);
    buttons->addWidget(cmdCancel);

    auto* layout = new QGridLayout(this);
    layout->addLayout(run, 0, 0);
    layout->addLayout(colours, 0, 1);
    layout->addLayout(buttons, 1, 0, 1, 2);
    layout->setColumnStretch(1, 1);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

QGridLayout* frmColourFill::RunLayout() {
    auto* run = new QGridLayout;
    run->addWidget(Label2, 0, 0, 1, 2);
    run->addWidget(lstDateFrom, 1, 0, 1, 2);
    run->addWidget(txtDateTo, 2, 0, 1, 2);
    run->addWidget(Label1, 3, 0);
    run->addWidget(txtUnit, 3, 1, Qt::AlignLeft);
    run->addWidget(optUnit[0], 4, 0, 1, 2);
    run->addWidget(optUnit[1], 5, 0, 1, 2);
    run->setRowStretch(6, 1);
    return run;
}

// Tab reads the run's settings on the left, then what to fill and the colours
// on the right, then the buttons. "Fill What?" stands before the boxes it asks
// about; the end date's box has no label of its own.
void frmColourFill::SetUpKeyboard() {
    LabelList(Label2, lstDateFrom);
    Label1->setBuddy(txtUnit);
    Label4->setBuddy(chkFill[0]);
    txtDateTo->setAccessibleName(QStringLiteral("Last date"));
    SetTabOrder(QList<QWidget*>{lstDateFrom, txtDateTo, txtUnit, optUnit[0], optUnit[1], chkFill[0],
                                chkFill[1]} +
                Colours->TabOrder() + QList<QWidget*>{cmdDoIt, cmdCancel});
}

void frmColourFill::Connect() {
    connect(lstDateFrom, &QListWidget::currentRowChanged, this, [this] { lstDateFrom_Click(); });
    connect(lstDateFrom, &QListWidget::itemClicked, this, [this] { lstDateFrom_Click(); });
    connect(optUnit[0], &QRadioButton::clicked, this, [this] { optUnit_Click(0); });
    connect(optUnit[1], &QRadioButton::clicked, this, [this] { optUnit_Click(1); });
    connect(txtUnit, &QLineEdit::textChanged, this, [this] { txtUnit_Change(); });
    connect(cmdDoIt, &QPushButton::clicked, this, [this] { cmdDoIt_Click(); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { cmdCancel_Click(); });
}

void frmColourFill::Form_Load() {
    store_.module1.FillYearMonthLengths();
    Units = 1;
    Kind = Daily;
    Step = 1;
    optUnit[0]->setChecked(true);
    startDates_ = StartDates::Read(store_.module1);
    StartDate = startDates_.Today;
    startDates_.Fill(lstDateFrom);
    ShowEndDate();
    FontColour = ColourChoice{};
    BackColour = ColourChoice{};
    Colours->Attach(FontColour, BackColour);
}

void frmColourFill::lstDateFrom_Click() {
    if (startDates_.TakeChosen(lstDateFrom, StartDate)) {
        ShowEndDate();
    }
}

void frmColourFill::optUnit_Click(int index) {
    Kind = static_cast<qint16>(index + 1);
    Step = index == 1 ? 7 : 1;
    ShowEndDate();
}

// Any number counts: values outside 1..366 are brought to the nearer end.
void frmColourFill::txtUnit_Change() {
    const QString text = txtUnit->text();
    if (!IsNumeric(text)) {
        return;
    }
    Units = static_cast<qint16>(std::clamp(RoundHalfEven(Val(text)), 1.0, 366.0));
    ShowEndDate();
}

void frmColourFill::cmdDoIt_Click() {
    if (!chkFill[0]->isChecked() && !chkFill[1]->isChecked()) {
        store_.module1.Services().Messages.Show(QStringLiteral("'Fill What' has not been checked"),
                                                MessageButtons::Ok, MessageIcon::Question,
                                                QStringLiteral("what?"));
        return;
    }
    FillRun();
    filled_ = true;
    accept();
}

void frmColourFill::cmdCancel_Click() {
    reject();
}

void frmColourFill::ShowEndDate() {
    const CalDate end = EndDate();
    txtDateTo->setText(FormatCalDate(end) + QLatin1Char(' ') +
                       store_.module1.DayNameOf(end.Month, end.Day));
}

}  // namespace kelvane
