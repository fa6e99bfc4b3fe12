#!/usr/bin/env bash
# Writes the seed corpora: the start of the default book in every encoding
# and line end the reader knows, and preferences records as the program
# writes them. Run again only to change the seeds; its output is kept.
set -euo pipefail
cd "$(dirname "$0")/.."
book=fuzz/corpus/book prefs=fuzz/corpus/prefs
mkdir -p "$book" "$prefs"

# The first two poems, blank lines included.
head -n 34 data/Verlis.txt > "$book/utf-8.txt"
src=$book/utf-8.txt
{ printf '\xEF\xBB\xBF'; cat "$src"; } > "$book/utf-8-mark.txt"
iconv -f UTF-8 -t UTF-16LE "$src" | { printf '\xFF\xFE'; cat; } > "$book/utf-16le-mark.txt"
iconv -f UTF-8 -t UTF-16BE "$src" | { printf '\xFE\xFF'; cat; } > "$book/utf-16be-mark.txt"
iconv -f UTF-8 -t UTF-32LE "$src" | { printf '\xFF\xFE\x00\x00'; cat; } > "$book/utf-32le-mark.txt"
iconv -f UTF-8 -t SHIFT_JIS "$src" > "$book/shift_jis.txt"
iconv -f UTF-8 -t EUC-JP "$src" > "$book/euc-jp.txt"
iconv -f UTF-8 -t ISO-2022-JP "$src" > "$book/iso-2022-jp.txt"
sed 's/$/\r/' "$src" > "$book/crlf.txt"
tr '\n' '\r' < "$src" > "$book/cr.txt"
# Lines of two characters, where the encoding is hardest to tell.
grep -v '^$' "$src" | LC_ALL=C.UTF-8 sed 's/^\(..\).*/\1/' > "$book/short.txt"
iconv -f UTF-8 -t EUC-JP "$book/short.txt" > "$book/short-euc-jp.txt"
iconv -f UTF-8 -t SHIFT_JIS "$book/short.txt" > "$book/short-shift_jis.txt"
# A line longer than the reader keeps, past its cut and the first chunk.
{ head -n 3 "$book/shift_jis.txt"; for _ in $(seq 700); do sed -n 4p "$book/shift_jis.txt" | tr -d '\n'; done; echo; tail -n 5 "$book/shift_jis.txt"; } > "$book/long-line-shift_jis.txt"

# Records: size, font name with a length byte, left, top, width, height,
# four style bytes, text and background as hue, saturation, value; big-endian.
python3 - "$prefs" <<'PY'
import colorsys, struct, sys
def record(size, font, geometry, styles, text, back):
    name = font.encode()
    out = struct.pack('>BB', size, len(name)) + name + struct.pack('>4h4b', *geometry, *styles)
    for rgb in (text, back):
        out += struct.pack('>3d', *colorsys.rgb_to_hsv(*(c / 255 for c in rgb)))
    return out
records = {
    'defaults': record(11, 'system', (100, 100, 552, 516), (0, 0, 0, 0), (0, 0, 0), (255, 255, 255)),
    'styled': record(24, 'Noto Serif CJK JP', (-100, 3000, 900, 700), (1, 1, 1, 1),
                     (0x33, 0x66, 0xCC), (0xFF, 0xF8, 0xE7)),
    'japanese-name': record(64, 'ヒラギノ明朝 ProN', (0, 0, 480, 32000), (0, 1, 0, 1),
                            (0xFF, 0, 0), (0, 0, 0)),
    'empty-name': record(1, '', (0, 0, 0, 0), (0, 0, 0, 0), (0, 0, 0), (0, 0, 0)),
    'longest-name': record(11, '明' * 85, (100, 100, 552, 516), (0, 0, 0, 0), (0, 0, 0), (255, 255, 255)),
}
for name, data in records.items():
    open(f'{sys.argv[1]}/{name}.bin', 'wb').write(data)
open(f'{sys.argv[1]}/cut.bin', 'wb').write(records['styled'][:30])
PY
