"""Registers and entries of memories as pictures: rows of 32 bits, highest first, with their fields."""
import html

CELL, ROW, TOP = 22, 34, 16  # of a bit; of a row, and what stands above its boxes
WORD = 32


def _runs(fields, width):
    """(highest bit, lowest bit, field or None, whether all of the field), highest first, none across a word's end."""
    owner = [None] * width
    for field in fields:
        for bit in field['bits']:
            owner[bit] = field
    high = width - 1
    while high >= 0:
        low = high
        while low % WORD and owner[low - 1] is owner[high]:
            low -= 1
        yield high, low, owner[high]
        high = low - 1


def drawing(name, fields, width):
    """SVG whose colours a style sheet says: classes `field`, `field read-only` and `none` for the boxes."""
    columns = min(width, WORD)
    rows = (width + WORD - 1) // WORD
    parts = []
    for high, low, field in _runs(fields, width):
        row = rows - 1 - high // WORD
        x = (columns - 1 - high % WORD) * CELL
        y = row * (ROW + TOP) + TOP
        length = (high - low + 1) * CELL
        kind = 'none' if field is None else 'field' if field['writable'] else 'field read-only'
        parts.append('<rect class="%s" x="%d.5" y="%d.5" width="%d" height="%d"/>' % (kind, x, y, length, ROW - 8))
        for bit, place, anchor in {(high, x + 2, 'start'), (low, x + length - 1, 'end')}:
            if (anchor == 'start' or length > 2 * CELL - 4) and not (anchor == 'end' and high == low):
                parts.append('<text class="bit" x="%d" y="%d" text-anchor="%s">%d</text>'
                             % (place, y - 4, anchor, bit))
        if field is not None:
            label = field['name']
            room = int(length / 6.7)
            shown = label if len(label) <= room else label[:max(room - 1, 1)] + u'\u2026' if room > 1 else ''
            parts.append('<text class="name" x="%.1f" y="%.1f">%s<title>%s, bits %d to %d</title></text>'
                         % (x + length / 2, y + ROW / 2 + .5, html.escape(shown), html.escape(label), low, high))
    return ('<svg class="bits" role="img" aria-label="bits of %s" viewBox="0 0 %d %d" width="%d" height="%d">%s</svg>'
            % (html.escape(name), columns * CELL + 1, rows * (ROW + TOP), columns * CELL + 1, rows * (ROW + TOP),
               ''.join(parts)))
