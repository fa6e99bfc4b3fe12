// The labels of the label page that answer to the pointer.
#include "mainwindow.h"

namespace verlis {

namespace {

constexpr Color HoverBlack = 0x000000;

} // namespace

bool mainWindow::turnFromArrow(Label *label, Qt::KeyboardModifiers modifiers, Direction direction)
{
    const int line = label->Index();
    label->setTextColor(IdleGrey);
    // With Shift every line turns, the pressed one in its turn like the others.
    if (modifiers & Qt::ShiftModifier)
        m_selection.turnAllLines(direction);
    else
        m_selection.turnLine(line, direction);
    makePoetry();
    return false;
}

bool mainWindow::LeftArrowLabel_MouseDown(Label *label, Qt::KeyboardModifiers modifiers)
{
    return turnFromArrow(label, modifiers, Direction::Backwards);
}

bool mainWindow::rightArrowLabel_MouseDown(Label *label, Qt::KeyboardModifiers modifiers)
{
    return turnFromArrow(label, modifiers, Direction::Forwards);
}

bool mainWindow::resetBtn_MouseDown(Label *label)
{
    label->setTextColor(IdleGrey);
    m_selection.resetSelection();
    makePoetry();
    return false;
}

bool mainWindow::shuffleBtn_MouseDown(Label *label)
{
    label->setTextColor(IdleGrey);
    m_selection.shuffleSelection();
    makePoetry();
    return false;
}

bool mainWindow::pageLabel_MouseDown(Label *label)
{
    m_selection.shuffleLine(label->Index());
    makePoetry();
    return false;
}

bool mainWindow::numberBtn_MouseDown(Label *)
{
    m_prefs.BshowNumber = !m_prefs.BshowNumber;
    emit appearanceWanted();
    return false;
}

bool mainWindow::loadBtn_MouseDown(Label *)
{
    m_pagePanel->setValue(ImportPage);
    return false;
}

void mainWindow::hoverLabel_MouseEnter(Label *label) { label->setTextColor(HoverBlack); }

void mainWindow::hoverLabel_MouseExit(Label *label) { label->setTextColor(IdleGrey); }

} // namespace verlis
