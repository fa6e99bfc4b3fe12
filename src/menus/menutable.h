#pragma once

#include <span>

namespace verlis {

enum class ItemKind { Menu, Item, Separator, ArrayItem };
enum class ItemRole { Plain, Quit, About, Checkable };
// When an item can be chosen: on every panel page, only while the poem is
// read, or never (the Edit items that a read-only field has no use for).
enum class Usable { Always, Reading, Never };

// One node of the menu tree. `parent` is null for the menus of the bar.
struct MenuEntry {
    const char *parent;
    const char *name;
    const char *text; // UTF-8
    const char *shortcut;
    ItemKind kind = ItemKind::Item;
    ItemRole role = ItemRole::Plain;
    Usable usable = Usable::Always;
};

// The whole tree, in the order in which its items are appended. An array's
// entry holds the defaults that each new member of it starts with.
std::span<const MenuEntry> menuTree();

} // namespace verlis
