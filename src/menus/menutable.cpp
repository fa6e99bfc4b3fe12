#include "menutable.h"

namespace verlis {

namespace {

using K = ItemKind;
using R = ItemRole;
using U = Usable;

constexpr MenuEntry Tree[] = {
    {nullptr, "FileMenu", "ファイル", "", K::Menu},
    {"FileMenu", "FileQuit", "終了", "Cmd+Q", K::Item, R::Quit},
    {"FileMenu", "aboutMenu", "Verlisについて...", "", K::Item, R::About},
    {"FileMenu", "menuInportText", "読み込み...", ""},
    {"FileMenu", "UntitledSeparator4", "-", "", K::Separator},
    {"FileMenu", "MClose", "ウインドウを閉じる", "Cmd+W"},

    {nullptr, "EditMenu", "編集", "", K::Menu},
    {"EditMenu", "EditUndo", "元に戻す", "Cmd+Z", K::Item, R::Plain, U::Never},
    {"EditMenu", "UntitledMenu1", "-", "", K::Separator},
    {"EditMenu", "EditCut", "カット", "Cmd+X", K::Item, R::Plain, U::Never},
    {"EditMenu", "EditCopy", "コピー", "Cmd+C", K::Item, R::Plain, U::Reading},
    {"EditMenu", "EditPaste", "貼り付け", "Cmd+V", K::Item, R::Plain, U::Never},
    {"EditMenu", "EditClear", "削除", "", K::Item, R::Plain, U::Never},
    {"EditMenu", "UntitledMenu0", "-", "", K::Separator},
    {"EditMenu", "EditSelectAll", "すべてを選択", "Cmd+A", K::Item, R::Plain, U::Reading},

    {nullptr, "hyoujiMenu", "表示", "", K::Menu},
    {"hyoujiMenu", "hyoujiFont", "フォント", "", K::Menu},
    {"hyoujiFont", "fontBold", "ボールド", "Cmd+Control+B", K::Item, R::Checkable, U::Reading},
    {"hyoujiFont", "fontItalic", "イタリック", "Cmd+Control+I", K::Item, R::Checkable, U::Reading},
    {"hyoujiFont", "fontUnderline", "アンダーライン", "Cmd+Control+U", K::Item, R::Checkable,
     U::Reading},
    {"hyoujiFont", "UntitledSeparator0", "-", "", K::Separator},
    {"hyoujiFont", "fontColor", "色...", "", K::Item, R::Plain, U::Reading},
    {"hyoujiFont", "UntitledSeparator", "-", "", K::Separator},
    {"hyoujiFont", "fontName", "", "", K::ArrayItem, R::Plain, U::Reading},
    {"hyoujiMenu", "menuBackColor", "背景色...", "", K::Item, R::Plain, U::Reading},
    {"hyoujiMenu", "UntitledSeparator3", "-", "", K::Separator},
    {"hyoujiMenu", "menuShowNumber", "ページ番号", "", K::Item, R::Checkable, U::Reading},

    {nullptr, "生成Menu", "生成", "", K::Menu},
    {"生成Menu", "menuReset", "初期状態", "Cmd+r"},
    {"生成Menu", "menuShuffle", "無作為", "Cmd+Shift+r"},

    {nullptr, "pageMenu", "前のページ", "", K::Menu},
    {"pageMenu", "menuPrevAllLine", "すべての行", "Cmd+[", K::Item, R::Plain, U::Reading},
    {"pageMenu", "UntitledSeparator1", "-", "", K::Separator},
    {"pageMenu", "menuPrevLine", "1行目", "Cmd+Option+1", K::ArrayItem, R::Plain, U::Reading},

    {nullptr, "次のページMenu", "次のページ", "", K::Menu},
    {"次のページMenu", "menuNextAllLine", "すべての行", "Cmd+]", K::Item, R::Plain, U::Reading},
    {"次のページMenu", "UntitledSeparator2", "-", "", K::Separator},
    {"次のページMenu", "menuNextLine", "1行目", "Cmd+Shift+1", K::ArrayItem, R::Plain, U::Reading},
};

} // namespace

std::span<const MenuEntry> menuTree() { return Tree; }

} // namespace verlis
