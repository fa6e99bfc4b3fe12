#include "mainwindow.h"

#include "layoutpass.h"
#include "locks.h"
#include "poem/composition.h"

#include <QMenuBar>
#include <QPushButton>

namespace verlis {

namespace {

constexpr QRect PanelRect(12, 10, 528, 496);

} // namespace

mainWindow::mainWindow(Preferences &prefs, QMenuBar *menuBar, Dialogs &dialogs)
    : m_prefs(prefs), m_dialogs(dialogs)
{
    Layout(menuBar);
    CreateControls();
    DefaultListbox_Open();
}

void mainWindow::Layout(QMenuBar *menuBar)
{
    setMenuBar(menuBar);
    setWindowTitle(QStringLiteral("詩篇"));
    m_client = new QWidget(this);
    m_client->setObjectName(QStringLiteral("client"));
    m_client->setMinimumSize(WindowLimits.minWidth, WindowLimits.minHeight);
    m_client->setMaximumSize(WindowLimits.maxWidth, WindowLimits.maxHeight);
    m_client->setAutoFillBackground(true);
    setCentralWidget(m_client);
    setBackColor(0xFFFFFF);
    m_client->installEventFilter(this);
    setClientGeometry(DefaultLeft, DefaultTop, DefaultWidth, DefaultHeight);
}

void mainWindow::CreateControls()
{
    m_pagePanel = new PagePanel(3, m_client);
    m_pagePanel->setObjectName(QStringLiteral("PagePanel1"));
    place(m_pagePanel, PanelRect, LockLeft | LockTop | LockRight | LockBottom);
    createImportPage(m_pagePanel->panelPage(ImportPage));
    createLabelPage(m_pagePanel->panelPage(LabelPage));
    createReadingPage(m_pagePanel->panelPage(ReadingPage));
    connect(m_pagePanel, &QStackedWidget::currentChanged, this, &mainWindow::panelPageChanged);
    connect(m_pagePanel, &QStackedWidget::currentChanged, this, &mainWindow::focusPoem);
    applyLocks();
}

void mainWindow::createImportPage(QWidget *page)
{
    m_listbox =
        new Listbox({QStringLiteral("頁"), QStringLiteral("行"), QStringLiteral(" ")}, page);
    m_listbox->setObjectName(QStringLiteral("DefaultListbox"));
    m_listbox->setAccessibleName(QStringLiteral("本の内容"));
    m_listbox->setAccessibleDescription(
        QStringLiteral("本のすべての行を頁、行、本文の順に並べた表"));
    // The third heading shows blank; a screen reader names the column.
    m_listbox->horizontalHeaderItem(2)->setData(Qt::AccessibleTextRole, QStringLiteral("本文"));
    place(m_listbox, QRect(46, 37, 460, 407), LockLeft | LockTop | LockRight | LockBottom);

    // Never shown: commands that other code runs with click().
    m_readTextBtn = new QPushButton(QStringLiteral("読み込み"), page);
    m_readTextBtn->setObjectName(QStringLiteral("ReadTextBtn"));
    m_readTextBtn->setVisible(false);
    place(m_readTextBtn, QRect(426, 463, 80, 20), LockRight | LockBottom);
    connect(m_readTextBtn, &QPushButton::clicked, this, &mainWindow::ReadTextBtn_Action);

    m_makePBtn = new QPushButton(QStringLiteral("生成"), page);
    m_makePBtn->setObjectName(QStringLiteral("makePBtn"));
    m_makePBtn->setVisible(false);
    m_makePBtn->setEnabled(false);
    place(m_makePBtn, QRect(334, 463, 80, 20), LockRight | LockBottom);
    connect(m_makePBtn, &QPushButton::clicked, this, &mainWindow::makePBtn_Action);
}

void mainWindow::createLabelPage(QWidget *page)
{
    const auto makeArray = [&](std::array<Label *, LineCount> &array, const char *name,
                               const QString &text, Color color, Qt::Alignment align, QSize size) {
        for (int i = 0; i < LineCount; ++i) {
            auto *label = new Label(i, page);
            label->setObjectName(QString::fromLatin1(name));
            label->setText(text);
            label->setTextColor(color);
            label->setAlignment(align | Qt::AlignVCenter);
            label->resize(size);
            array[i] = label;
        }
    };
    makeArray(m_textLabel, "textLabel", QStringLiteral("名称未設定"), 0x000000, Qt::AlignLeft,
              {100, 20});
    for (Label *label : m_textLabel)
        label->setSelectable(true);
    makeArray(m_leftArrow, "LeftArrowLabel", QStringLiteral("◀"), IdleGrey, Qt::AlignHCenter,
              {20, 20});
    makeArray(m_rightArrow, "rightArrowLabel", QStringLiteral("▶"), IdleGrey, Qt::AlignHCenter,
              {20, 20});
    m_resetBtn = createWordLabel(page, QStringLiteral("reset"), QRect(486, 16, 54, 20));
    makeArray(m_pageLabel, "pageLabel", QStringLiteral("0"), IdleGrey, Qt::AlignHCenter, {34, 20});
    m_shuffleBtn = createWordLabel(page, QStringLiteral("shuffle"), QRect(429, 16, 54, 20));
    m_numberBtn = createWordLabel(page, QStringLiteral("number"), QRect(306, 16, 54, 20));
    m_loadBtn = createWordLabel(page, QStringLiteral("text"), QRect(367, 16, 54, 20));
    m_resetBtn->setObjectName(QStringLiteral("resetBtn"));
    m_shuffleBtn->setObjectName(QStringLiteral("shuffleBtn"));
    m_numberBtn->setObjectName(QStringLiteral("numberBtn"));
    m_loadBtn->setObjectName(QStringLiteral("loadBtn"));

    for (int i = 0; i < LineCount; ++i) {
        connect(m_leftArrow[i], &Label::mouseDown, this, &mainWindow::LeftArrowLabel_MouseDown);
        connect(m_rightArrow[i], &Label::mouseDown, this, &mainWindow::rightArrowLabel_MouseDown);
        connect(m_pageLabel[i], &Label::mouseDown, this, &mainWindow::pageLabel_MouseDown);
        for (Label *hover : {m_leftArrow[i], m_rightArrow[i]}) {
            connect(hover, &Label::mouseEnter, this, &mainWindow::hoverLabel_MouseEnter);
            connect(hover, &Label::mouseExit, this, &mainWindow::hoverLabel_MouseExit);
        }
    }
    connect(m_resetBtn, &Label::mouseDown, this, &mainWindow::resetBtn_MouseDown);
    connect(m_shuffleBtn, &Label::mouseDown, this, &mainWindow::shuffleBtn_MouseDown);
    connect(m_numberBtn, &Label::mouseDown, this, &mainWindow::numberBtn_MouseDown);
    connect(m_loadBtn, &Label::mouseDown, this, &mainWindow::loadBtn_MouseDown);
    for (Label *word : {m_resetBtn, m_shuffleBtn, m_numberBtn, m_loadBtn}) {
        connect(word, &Label::mouseEnter, this, &mainWindow::hoverLabel_MouseEnter);
        connect(word, &Label::mouseExit, this, &mainWindow::hoverLabel_MouseExit);
    }
}

Label *mainWindow::createWordLabel(QWidget *page, const QString &text, const QRect &declared)
{
    auto *label = new Label(Label::NoIndex, page);
    label->setText(text);
    label->setTextColor(IdleGrey);
    label->setAlignment(Qt::AlignCenter);
    place(label, declared, LockTop | LockRight);
    return label;
}

void mainWindow::createReadingPage(QWidget *page)
{
    m_textField = new TextField(page);
    m_textField->setObjectName(QStringLiteral("TextField1"));
    m_textField->setAccessibleName(QStringLiteral("詩"));
    m_textField->setAccessibleDescription(
        QStringLiteral("十四行の詩。各行はその行の頁から取られる"));
    place(m_textField, QRect(79, 34, 442, 448), LockLeft | LockTop | LockRight | LockBottom);

    m_noField = new TextField(page);
    m_noField->setObjectName(QStringLiteral("noField"));
    m_noField->setAccessibleName(QStringLiteral("頁番号"));
    m_noField->setAccessibleDescription(QStringLiteral("詩の各行が取られた頁の番号"));
    m_noField->setRightAligned(true);
    m_noField->followRows(m_textField); // one size, and each number level with its line
    place(m_noField, QRect(20, 34, 40, 448), LockLeft | LockTop | LockBottom);
    setTabOrder(m_textField, m_noField);
}

void mainWindow::focusPoem()
{
    if (m_pagePanel->Value() == ReadingPage)
        m_textField->setFocus();
}

void mainWindow::place(QWidget *control, const QRect &declared, int locks)
{
    m_placed.push_back({control, declared, locks});
}

void mainWindow::applyLocks()
{
    const QSize design(DefaultWidth, DefaultHeight);
    const QSize client(Width(), Height());
    // The panel first: the controls on its pages are placed relative to it.
    for (const Placed &p : m_placed)
        setControlRect(p.control, lockedRect(p.declared, p.locks, design, client));
}

void mainWindow::setControlRect(QWidget *control, const QRect &rect)
{
    if (control == m_pagePanel)
        control->setGeometry(rect);
    else
        control->setGeometry(rect.translated(-m_pagePanel->pos()));
}

QRect mainWindow::controlRect(const QWidget *control) const
{
    return QRect(control->mapTo(m_client, QPoint(0, 0)), control->size());
}

Color mainWindow::BackColor() const
{
    return fromQColor(m_client->palette().color(QPalette::Window));
}

void mainWindow::setBackColor(Color color)
{
    QPalette p = m_client->palette();
    p.setColor(QPalette::Window, toQColor(color));
    m_client->setPalette(p);
}

int mainWindow::Width() const { return m_client->width(); }
int mainWindow::Height() const { return m_client->height(); }

void mainWindow::setClientGeometry(int left, int top, int width, int height)
{
    const int bar = menuBar()->heightForWidth(width);
    const int barHeight = bar > 0 ? bar : menuBar()->sizeHint().height();
    move(left, top);
    resize(width, height + barHeight);
    // Before the window is shown nothing lays it out: size the client area now.
    if (!isVisible())
        m_client->setGeometry(0, barHeight, width, height);
}

void mainWindow::SetControls()
{
    const auto rows = labelRowGeometry(Width(), Height());
    for (int i = 0; i < LineCount; ++i) {
        setControlRect(m_pageLabel[i], rows[i].page);
        setControlRect(m_textLabel[i], rows[i].text);
        m_leftArrow[i]->setText(QStringLiteral("←"));
        setControlRect(m_leftArrow[i], rows[i].leftArrow);
        m_rightArrow[i]->setText(QStringLiteral("→"));
        setControlRect(m_rightArrow[i], rows[i].rightArrow);
    }
}

void mainWindow::makePoetry()
{
    SetControls();
    const ComposedPoem poem = composePoem(m_book, m_selection);
    for (int i = 0; i < LineCount; ++i) {
        m_pageLabel[i]->setText(poem.pageNumbers[i]);
        m_textLabel[i]->setText(poem.lineTexts[i]);
    }
    m_textField->setText(poem.text);
    m_noField->setText(poem.numbers);
    if (m_pagePanel->Value() == ImportPage)
        m_pagePanel->setValue(ReadingPage);
}

} // namespace verlis
