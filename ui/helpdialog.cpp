#include "ui/helpdialog.h"

#include "library/usersettings.h"
#include "ui/appearance.h"
#include "ui_helpdialog.h"

#include <QAccessible>
#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QScreen>
#include <QShortcut>

namespace tarvel4 {

namespace {

const QKeySequence nextKey(QStringLiteral("F3"));
const QKeySequence previousKey(QStringLiteral("Shift+F3"));

} // namespace

HelpDialog::HelpDialog(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::HelpDialog>())
{
    ui->setupUi(this);
    const QSize comfortable(fontMetrics().averageCharWidth() * 110, fontMetrics().height() * 40);
    resize(comfortable.boundedTo(screen()->availableSize() * 9 / 10));
    setUpSearch();
    loadPage();
    ui->textBrowser->setFocus();
}

HelpDialog::~HelpDialog() = default;

void HelpDialog::setUpSearch()
{
    const auto go = [this](HelpView::Direction direction) {
        return [this, direction] { search(direction, true); };
    };
    const auto next = go(HelpView::Direction::Next);
    const auto previous = go(HelpView::Direction::Previous);
    ui->searchLineEdit->installEventFilter(this);
    connect(ui->searchLineEdit, &QLineEdit::textChanged, this,
            [this] { search(HelpView::Direction::Next, false); });
    connect(ui->nextToolButton, &QToolButton::clicked, this, next);
    connect(ui->previousToolButton, &QToolButton::clicked, this, previous);
    // of their own: a button would answer a tenth of a second later
    connect(new QShortcut(nextKey, this), &QShortcut::activated, this, next);
    connect(new QShortcut(previousKey, this), &QShortcut::activated, this, previous);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this,
            &HelpDialog::startSearch);
    retranslate();
}

/** The keys of the search are told where it is. */
void HelpDialog::retranslate()
{
    const auto keys = [](const QKeySequence &sequence) {
        return sequence.toString(QKeySequence::NativeText);
    };
    ui->searchLineEdit->setPlaceholderText(
        tr("Cerca nell'aiuto (%1)").arg(keys(QKeySequence(QKeySequence::Find))));
    ui->nextToolButton->setToolTip(tr("Punto successivo (%1)").arg(keys(nextKey)));
    ui->previousToolButton->setToolTip(tr("Punto precedente (%1)").arg(keys(previousKey)));
}

void HelpDialog::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_scheme != Appearance::scheme()) {
        takeScheme();
        ui->textBrowser->layOutAgain();
    }
    if (event->type() != QEvent::LanguageChange)
        return;
    ui->retranslateUi(this);
    ui->searchLineEdit->clear();
    retranslate();
    loadPage();
}

bool HelpDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != ui->searchLineEdit || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    switch (key->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        search(key->modifiers() & Qt::ShiftModifier ? HelpView::Direction::Previous
                                                    : HelpView::Direction::Next,
               true);
        return true;
    case Qt::Key_Escape:
        ui->searchLineEdit->clear();
        ui->textBrowser->setFocus(Qt::OtherFocusReason);
        return true;
    default:
        return QDialog::eventFilter(watched, event);
    }
}

void HelpDialog::startSearch()
{
    ui->searchLineEdit->setFocus(Qt::ShortcutFocusReason);
    ui->searchLineEdit->selectAll();
}

void HelpDialog::search(HelpView::Direction direction, bool goesOn)
{
    const QString words = ui->searchLineEdit->text().simplified();
    if (words.isEmpty() && goesOn) {
        startSearch();
        return;
    }
    const bool isFound = ui->textBrowser->findWords(words, direction, goesOn);
    const QString answer = isFound ? QString() : tr("Non trovato");
    if (answer == ui->foundLabel->text())
        return;
    ui->foundLabel->setText(answer);
    ui->foundLabel->setVisible(!isFound);
    QAccessibleEvent told(ui->foundLabel, QAccessible::Alert); // the focus is elsewhere
    if (!isFound)
        QAccessible::updateAccessibility(&told);
}

/** For the page that is laid out next. */
void HelpDialog::takeScheme()
{
    m_scheme = Appearance::scheme();
    ui->textBrowser->document()->setDefaultStyleSheet(
        QStringLiteral("h1, h2, h3 { color: %1; }")
            .arg(QApplication::palette().color(QPalette::Link).name()));
}

void HelpDialog::loadPage()
{
    takeScheme();
    const QString italian = QStringLiteral("it");
    // required: German readers get the English page
    QFile page(UserSettings::language(italian) == italian ? QStringLiteral(":/help/help_it.html")
                                                          : QStringLiteral(":/help/help_en.html"));
    if (page.open(QIODevice::ReadOnly))
        ui->textBrowser->setPage(QString::fromUtf8(page.readAll()));
}

} // namespace tarvel4
