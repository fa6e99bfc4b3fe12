// The appearance pass: the settings reach the controls and the check marks.
#include "app.h"

#include "menus/menubar1.h"
#include "window/mainwindow.h"

#include <QAction>

namespace verlis {

namespace {

// The poem's size is a 26th of its field's height: seventeen rows with room between them.
constexpr double FieldHeightPerTextSize = 26.0;

} // namespace

void App::setAppearance()
{
    mainWindow &w = *m_window;
    const TextStyle labelStyle{fontNameText(prefs.mainfont), float(prefs.mainSize), prefs.mainBold,
                               prefs.mainItalic, prefs.mainUnderline};
    for (int i = 0; i < LineCount; ++i) {
        w.textLabel(i)->setTextStyle(labelStyle);
        w.pageLabel(i)->setTextStyle(labelStyle);
        w.pageLabel(i)->setVisible(prefs.BshowNumber);
    }
    // The reading page's text follows the height of its field, not mainSize.
    TextStyle fieldStyle = labelStyle;
    fieldStyle.TextSize = float(double(w.TextField1()->height()) / FieldHeightPerTextSize);
    w.TextField1()->setTextStyle(fieldStyle);
    w.noField()->setTextStyle(fieldStyle);
    w.TextField1()->setColors(prefs.ColorText, prefs.ColorBack);
    w.noField()->setColors(prefs.ColorText, prefs.ColorBack);
    w.setBackColor(prefs.ColorBack);
    w.noField()->setVisible(prefs.BshowNumber);

    const MenuBar1 &bar = *m_menuBar;
    bar.item(QStringLiteral("fontBold"))->setChecked(prefs.mainBold);
    bar.item(QStringLiteral("fontItalic"))->setChecked(prefs.mainItalic);
    bar.item(QStringLiteral("fontUnderline"))->setChecked(prefs.mainUnderline);
    bar.item(QStringLiteral("menuShowNumber"))->setChecked(prefs.BshowNumber);
    w.focusPoem();
}

} // namespace verlis
