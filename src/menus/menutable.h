#pragma once

#include <span>

namespace verlis {

enum class ItemKind { Menu, Item, Separator, ArrayItem };
enum class ItemRole { Plain, Quit, About, Checkable };

// One node of the menu tree. `parent` is null for the menus of the bar.
struct MenuEntry {
    const char *parent;
    const char *name;
    const char *text; // UTF-8
    const char *shortcut;
    ItemKind kind = ItemKind::Item;
    ItemRole role = ItemRole::Plain;
};

// The defaults that a new member of an item array starts with.
struct ArrayDefaults {
    const char *name;
    const char *text;
    const char *shortcut;
};

// The whole tree, in the order in which its items are appended.
std::span<const MenuEntry> menuTree();
std::span<const ArrayDefaults> arrayDefaults();

} // namespace verlis
