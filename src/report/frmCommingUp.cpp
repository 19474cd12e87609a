#include "report/frmCommingUp.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QResizeEvent>
#include <QTimer>
#include <QVBoxLayout>

#include "gui/NamedWidgets.h"
#include "gui/Twips.h"

namespace kelvane {

namespace {

// The viewer leaves this much of the dialog free to its right and below it.
constexpr double kViewerRightMarginTwips = 150;
constexpr double kViewerBottomMarginTwips = 420;
constexpr double kViewerLeftTwips = 120;
constexpr double kViewerWidthTwips = 6000;
constexpr double kViewerHeightTwips = 3600;

}  // namespace

frmCommingUp::frmCommingUp(Store& store, MonthViewControl& monthView, QWidget* parent)
    : QDialog(parent),
      Label2(NamedWidget<QLabel>(this, "Label2", QStringLiteral("Date From"))),
      lstDateFrom(NamedWidget<QListWidget>(this, "lstDateFrom")),
      Label1(NamedWidget<QLabel>(this, "Label1", QStringLiteral("Time Units"))),
      txtTimeUnits(NamedWidget<QLineEdit>(this, "txtTimeUnits", QStringLiteral("1"))),
      optTimeDuration{
          NamedWidget<QRadioButton>(this, "optTimeDuration", QStringLiteral("Day(s)")),
          NamedWidget<QRadioButton>(this, "optTimeDuration", QStringLiteral("Week(s)")),
          NamedWidget<QRadioButton>(this, "optTimeDuration", QStringLiteral("Month(s)"))},
      chkDisplay(NamedWidget<QCheckBox>(this, "chkDisplay", QStringLiteral("Display Schedule"))),
      usrDocViewer1(new usrDocViewer(store.module1, this)),
      store_(store),
      monthView_(monthView) {
    setObjectName(QStringLiteral("frmCommingUp"));
    setWindowTitle(QStringLiteral("Comming Up..."));
    setModal(true);
    usrDocViewer1->setObjectName(QStringLiteral("usrDocViewer1"));
    // The report's heading as a screen reader should say it, in the program's
    // own spelling.
    usrDocViewer1->SetSpokenName(QStringLiteral("Comming up"));
    BuildControls();
    SetUpKeyboard();
    Form_Load();
    Connect();
}

frmCommingUp::~frmCommingUp() {
    usrDocViewer1->Terminate();
}

// The settings stand in a row above the viewer, which takes the rest.
void frmCommingUp::BuildControls() {
    auto* group = new QButtonGroup(this);
    auto* kinds = new QVBoxLayout;
    for (int index = 0; index < static_cast<int>(optTimeDuration.size()); ++index) {
        group->addButton(optTimeDuration[static_cast<std::size_t>(index)], index);
        kinds->addWidget(optTimeDuration[static_cast<std::size_t>(index)]);
    }
    lstDateFrom->setMaximumHeight(lstDateFrom->fontMetrics().height() * 3);
    txtTimeUnits->setMaximumWidth(
        txtTimeUnits->fontMetrics().horizontalAdvance(QStringLiteral("00000")) + 12);

    auto* settings = new QWidget(this);
    auto* grid = new QGridLayout(settings);
    grid->addWidget(Label2, 0, 0);
    grid->addWidget(lstDateFrom, 1, 0, 2, 1);
    grid->addWidget(Label1, 0, 1);
    grid->addWidget(txtTimeUnits, 1, 1, Qt::AlignTop);
    grid->addLayout(kinds, 0, 2, 3, 1);
    grid->addWidget(chkDisplay, 0, 3, 3, 1, Qt::AlignVCenter);
    grid->setColumnStretch(0, 1);
    settings->adjustSize();

    const double dpi = DotsPerInch(this);
    const int left = TwipsToPixels(kViewerLeftTwips, dpi);
    const int width = std::max(TwipsToPixels(kViewerWidthTwips, dpi), settings->width() - left);
    usrDocViewer1->setGeometry(left, settings->height(), width,
                               TwipsToPixels(kViewerHeightTwips, dpi));
    settings->resize(left + width, settings->height());
    // The size at open is the smallest the dialog may get.
    const QSize opening(
        left + width + TwipsToPixels(kViewerRightMarginTwips, dpi),
        usrDocViewer1->geometry().bottom() + 1 + TwipsToPixels(kViewerBottomMarginTwips, dpi));
    resize(opening);
    setMinimumSize(opening);
}

// Tab reads the settings left to right, then the report under them. The
// dialog has no Cancel: Escape closes it as the window's frame does.
void frmCommingUp::SetUpKeyboard() {
    LabelList(Label2, lstDateFrom);
    Label1->setBuddy(txtTimeUnits);
    SetTabOrder({lstDateFrom, txtTimeUnits, optTimeDuration[0], optTimeDuration[1],
                 optTimeDuration[2], chkDisplay, usrDocViewer1->TextBox()});
}

void frmCommingUp::Connect() {
    connect(lstDateFrom, &QListWidget::currentRowChanged, this, [this] { lstDateFrom_Click(); });
    connect(lstDateFrom, &QListWidget::itemClicked, this, [this] { lstDateFrom_Click(); });
    for (int index = 0; index < static_cast<int>(optTimeDuration.size()); ++index) {
        connect(optTimeDuration[static_cast<std::size_t>(index)], &QRadioButton::clicked, this,
                [this, index] { optTimeDuration_Click(index); });
    }
    connect(txtTimeUnits, &QLineEdit::textChanged, this, [this] { txtTimeUnits_Change(); });
    connect(chkDisplay, &QCheckBox::clicked, this, [this] { chkDisplay_Click(); });
}

void frmCommingUp::Form_Load() {
    if (!usrDocViewer1->Initialize()) {
        QTimer::singleShot(0, this, &QDialog::reject);
        return;
    }
    store_.module1.FillYearMonthLengths();
    Units = 1;
    Kind = Days;
    optTimeDuration[0]->setChecked(true);
    startDates_ = StartDates::Read(store_.module1);
    StartDate = startDates_.Today;
    startDates_.Fill(lstDateFrom);
    BuildReport();
}

void frmCommingUp::lstDateFrom_Click() {
    if (startDates_.TakeChosen(lstDateFrom, StartDate)) {
        BuildReport();
    }
}

void frmCommingUp::optTimeDuration_Click(int index) {
    Kind = static_cast<qint16>(index + 1);
    BuildReport();
}

// Values outside 1..366, and text that is not a number, are ignored.
void frmCommingUp::txtTimeUnits_Change() {
    const QString text = txtTimeUnits->text();
    if (!IsNumeric(text)) {
        return;
    }
    const double value = RoundHalfEven(Val(text));
    if (value >= 1 && value <= 366) {
        Units = static_cast<qint16>(value);
        BuildReport();
    }
}

void frmCommingUp::chkDisplay_Click() {
    BuildReport();
}

void frmCommingUp::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    Form_Resize();
}

// The viewer keeps its place and grows and shrinks with the dialog.
void frmCommingUp::Form_Resize() {
    if (isMinimized()) {
        return;
    }
    const double dpi = DotsPerInch(this);
    const QPoint at = usrDocViewer1->pos();
    usrDocViewer1->resize(width() - at.x() - TwipsToPixels(kViewerRightMarginTwips, dpi),
                          height() - at.y() - TwipsToPixels(kViewerBottomMarginTwips, dpi));
}

}  // namespace kelvane
