#include "enabling.h"

#include "menubar1.h"

#include <QAction>

namespace verlis {

namespace {

constexpr int ReadingPage = 2;

constexpr const char *Always[] = {"aboutMenu", "menuInportText", "menuReset", "menuShuffle",
                                  "MClose"};
constexpr const char *ReadingOnly[] = {"fontBold",        "fontItalic",     "fontUnderline",
                                       "fontColor",       "menuBackColor",  "menuShowNumber",
                                       "menuNextAllLine", "menuPrevAllLine"};
constexpr const char *ReadingArrays[] = {"fontName", "menuNextLine", "menuPrevLine"};

void enable(MenuBar1 &bar, const char *name, bool enabled)
{
    for (QAction *item : bar.array(QString::fromLatin1(name)))
        item->setEnabled(enabled);
}

} // namespace

void EnableMenuItems(MenuBar1 &bar, int panelValue)
{
    const bool reading = panelValue == ReadingPage;
    for (const char *name : Always)
        enable(bar, name, true);
    for (const char *name : ReadingOnly)
        enable(bar, name, reading);
    for (const char *name : ReadingArrays)
        enable(bar, name, reading);
}

void enableEditItems(MenuBar1 &bar, int panelValue)
{
    for (const char *name : {"EditUndo", "EditCut", "EditPaste", "EditClear"})
        enable(bar, name, false);
    for (const char *name : {"EditCopy", "EditSelectAll"})
        enable(bar, name, panelValue == ReadingPage);
}

} // namespace verlis
