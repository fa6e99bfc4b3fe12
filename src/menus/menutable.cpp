#include "menutable.h"

namespace verlis {

namespace {

using K = ItemKind;
using R = ItemRole;

constexpr MenuEntry Tree[] = {
    {nullptr, "FileMenu", "ファイル", "", K::Menu},
    {"FileMenu", "FileQuit", "終了", "Cmd+Q", K::Item, R::Quit},
    {"FileMenu", "aboutMenu", "Verlisについて...", "", K::Item, R::About},
    {"FileMenu", "menuInportText", "読み込み...", ""},
    {"FileMenu", "UntitledSeparator4", "-", "", K::Separator},
    {"FileMenu", "MClose", "ウインドウを閉じる", "Cmd+W"},

    {nullptr, "EditMenu", "編集", "", K::Menu},
    {"EditMenu", "EditUndo", "元に戻す", "Cmd+Z"},
    {"EditMenu", "UntitledMenu1", "-", "", K::Separator},
    {"EditMenu", "EditCut", "カット", "Cmd+X"},
    {"EditMenu", "EditCopy", "コピー", "Cmd+C"},
    {"EditMenu", "EditPaste", "貼り付け", "Cmd+V"},
    {"EditMenu", "EditClear", "削除", ""},
    {"EditMenu", "UntitledMenu0", "-", "", K::Separator},
    {"EditMenu", "EditSelectAll", "すべてを選択", "Cmd+A"},

    {nullptr, "hyoujiMenu", "表示", "", K::Menu},
    {"hyoujiMenu", "hyoujiFont", "フォント", "", K::Menu},
    {"hyoujiFont", "fontBold", "ボールド", "Cmd+Control+B", K::Item, R::Checkable},
    {"hyoujiFont", "fontItalic", "イタリック", "Cmd+Control+I", K::Item, R::Checkable},
    {"hyoujiFont", "fontUnderline", "アンダーライン", "Cmd+Control+U", K::Item, R::Checkable},
    {"hyoujiFont", "UntitledSeparator0", "-", "", K::Separator},
    {"hyoujiFont", "fontColor", "色...", ""},
    {"hyoujiFont", "UntitledSeparator", "-", "", K::Separator},
    {"hyoujiFont", "fontName", "", "", K::ArrayItem},
    {"hyoujiMenu", "menuBackColor", "背景色...", ""},
    {"hyoujiMenu", "UntitledSeparator3", "-", "", K::Separator},
    {"hyoujiMenu", "menuShowNumber", "ページ番号", "", K::Item, R::Checkable},

    {nullptr, "生成Menu", "生成", "", K::Menu},
    {"生成Menu", "menuReset", "初期状態", "Cmd+r"},
    {"生成Menu", "menuShuffle", "無作為", "Cmd+Shift+r"},

    {nullptr, "pageMenu", "前のページ", "", K::Menu},
    {"pageMenu", "menuPrevAllLine", "すべての行", "Cmd+["},
    {"pageMenu", "UntitledSeparator1", "-", "", K::Separator},
    {"pageMenu", "menuPrevLine", "1行目", "Cmd+Option+1", K::ArrayItem},

    {nullptr, "次のページMenu", "次のページ", "", K::Menu},
    {"次のページMenu", "menuNextAllLine", "すべての行", "Cmd+]"},
    {"次のページMenu", "UntitledSeparator2", "-", "", K::Separator},
    {"次のページMenu", "menuNextLine", "1行目", "Cmd+Shift+1", K::ArrayItem},
};

constexpr ArrayDefaults Arrays[] = {
    {"menuNextLine", "1行目", "Cmd+Shift+1"},
    {"menuPrevLine", "1行目", "Cmd+Option+1"},
    {"fontName", "", ""},
};

} // namespace

std::span<const MenuEntry> menuTree() { return Tree; }
std::span<const ArrayDefaults> arrayDefaults() { return Arrays; }

} // namespace verlis
