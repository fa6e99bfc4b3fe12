#pragma once

namespace verlis {

// The pages of the window's panel, as against the pages of the Poem book.
enum PanelPage { ImportPage = 0, LabelPage = 1, ReadingPage = 2 };

} // namespace verlis
