"""Training data for the plate reader's two networks.

Real samples come from folders of road photographs with one annotated plate each
(NAME.jpg beside NAME.txt: "NAME.jpg<TAB>X<TAB>Y<TAB>W<TAB>H<TAB>PLATE"). Synthetic samples
are plates rendered here: the fonts of the machine, the Hershey fonts the program's own
synthetic source draws with, light and dark grounds, state lines and separators, then
perspective, blur, noise, lighting and JPEG loss.

Every random choice goes through a numpy Generator, so a seed gives the same data.
"""
import glob
import os
import zlib

import cv2
import numpy as np
from PIL import Image, ImageDraw, ImageFont

ALPHABET = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"  # class 0 is the CTC blank
READER_SIZE = (128, 32)  # width, height of a plate as the reader sees it

LETTERS = "ABCDEFGHIJKLMNOPQRSTUVWXYZ"
DIGITS = "0123456789"
# L a letter, N a digit, A either: the stock European layouts, Brazil's two, and the shapes
# of many United States series.
LAYOUTS = [
    "LLNNNLL", "NNNNLLL", "LLNNLLL", "LLLLNNN", "LLNNNN", "LLLNNNN", "LLLNLNN",
    "NLLLNNN", "NNNLLL", "LLLNNN", "NLLNNN", "NNNNNN", "LLNNNNN", "NNLLNNN", "AAAAAA",
    "AAAAAAA", "AAAAA", "NAAAAAA", "LLLNNNL",
]

FONT_FILES = [
    "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf",
    "/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf",
    "/usr/share/fonts/truetype/dejavu/DejaVuSansCondensed.ttf",
    "/usr/share/fonts/truetype/dejavu/DejaVuSansCondensed-Bold.ttf",
    "/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf",
    "/usr/share/fonts/truetype/dejavu/DejaVuSansMono-Bold.ttf",
    "/usr/share/fonts/truetype/liberation2/LiberationSans-Regular.ttf",
    "/usr/share/fonts/truetype/liberation2/LiberationSans-Bold.ttf",
    "/usr/share/fonts/truetype/liberation2/LiberationMono-Bold.ttf",
    "/usr/share/fonts/truetype/freefont/FreeSans.ttf",
    "/usr/share/fonts/truetype/freefont/FreeSansBold.ttf",
    "/usr/share/fonts/truetype/freefont/FreeMonoBold.ttf",
    "/usr/share/fonts/opentype/urw-base35/NimbusSans-Regular.otf",
    "/usr/share/fonts/opentype/urw-base35/NimbusSans-Bold.otf",
    "/usr/share/fonts/opentype/urw-base35/NimbusSansNarrow-Regular.otf",
    "/usr/share/fonts/opentype/urw-base35/NimbusSansNarrow-Bold.otf",
    "/usr/share/fonts/opentype/urw-base35/URWGothic-Book.otf",
    "/usr/share/fonts/opentype/urw-base35/URWGothic-Demi.otf",
    "/usr/share/fonts/opentype/urw-base35/NimbusMonoPS-Bold.otf",
]
HERSHEY = [cv2.FONT_HERSHEY_COMPLEX, cv2.FONT_HERSHEY_SIMPLEX, cv2.FONT_HERSHEY_DUPLEX,
           cv2.FONT_HERSHEY_TRIPLEX]
WORDS = ["CALIFORNIA", "TEXAS", "FLORIDA", "NEW YORK", "ILLINOIS", "OHIO", "BRASIL", "SP",
         "SAO PAULO", "EMPIRE STATE", "LAND OF LINCOLN", "SUNSHINE STATE", "DEALER",
         "DMV.CA.GOV", "VIRGINIA", "ARIZONA", "GRAND CANYON STATE", "OREGON", "NEVADA", "MG"]


def fonts():
    present = [f for f in FONT_FILES if os.path.exists(f)]
    if not present:
        raise SystemExit("no fonts found: apt-get install fonts-dejavu-core")
    return present


class DevSet:
    """One folder of annotated photographs."""

    def __init__(self, folder):
        self.samples = []
        for txt in sorted(glob.glob(os.path.join(folder, "*.txt"))):
            with open(txt, encoding="utf-8") as f:
                fields = f.readline().rstrip("\n").split("\t")
            if len(fields) < 6:
                continue
            name, x, y, w, h, plate = fields[:6]
            image = os.path.join(folder, name)
            if os.path.exists(image):
                self.samples.append((image, (int(x), int(y), int(w), int(h)), plate.upper()))

    @staticmethod
    def held_out(path):
        """A fixed quarter of every set is never trained on; its figures are the honest ones."""
        return zlib.crc32(os.path.basename(path).encode()) % 4 == 0

    def split(self, train):
        return [s for s in self.samples if self.held_out(s[0]) != train]


class BoxSet:
    """One folder of road frames with plate boxes and no text: NAME.jpg beside NAME.txt, one
    line a plate, "NAME.jpg<TAB>X<TAB>Y<TAB>W<TAB>H". A frame whose name begins with "night"
    was taken by night."""

    def __init__(self, folder):
        self.frames = []  # (image path, [(x, y, w, h), ...])
        for txt in sorted(glob.glob(os.path.join(folder, "*.txt"))):
            boxes, name = [], None
            with open(txt, encoding="utf-8") as f:
                for line in f:
                    fields = line.rstrip("\n").split("\t")
                    if len(fields) < 5:
                        continue
                    name = fields[0]
                    x, y, w, h = (float(v) for v in fields[1:5])
                    if w >= 2 and h >= 2:
                        boxes.append((x, y, w, h))
            image = os.path.join(folder, name) if name else txt[:-4] + ".jpg"
            if boxes and os.path.exists(image):
                self.frames.append((image, boxes))

    @staticmethod
    def by_night(path):
        return os.path.basename(path).startswith("night")


def random_text(rng):
    layout = LAYOUTS[rng.integers(len(LAYOUTS))]
    out = []
    for slot in layout:
        pool = LETTERS if slot == "L" else DIGITS if slot == "N" else LETTERS + DIGITS
        out.append(pool[rng.integers(len(pool))])
    return "".join(out)


def _pil_glyphs(text, font_file, height, rng):
    font = ImageFont.truetype(font_file, size=int(height * 1.38))
    pieces = []
    for c in text:
        box = font.getbbox(c)
        w, h = box[2] - box[0], box[3] - box[1]
        canvas = Image.new("L", (w + 4, h + 4), 0)
        ImageDraw.Draw(canvas).text((2 - box[0], 2 - box[1]), c, fill=255, font=font)
        glyph = np.array(canvas)
        pieces.append(cv2.resize(glyph, (max(1, int(glyph.shape[1] * height / glyph.shape[0])),
                                         height), interpolation=cv2.INTER_AREA))
    return pieces


def _hershey_glyphs(text, font, height, rng):
    pieces = []
    thickness = max(2, int(height / rng.uniform(7, 11)))
    for c in text:
        (w, h), base = cv2.getTextSize(c, font, 2.0, thickness)
        canvas = np.zeros((h + base + 8, w + 8), np.uint8)
        cv2.putText(canvas, c, (4, h + 4), font, 2.0, 255, thickness, cv2.LINE_AA)
        ys, xs = np.nonzero(canvas)
        glyph = canvas[ys.min():ys.max() + 1, xs.min():xs.max() + 1]
        pieces.append(cv2.resize(glyph, (max(1, int(glyph.shape[1] * height / glyph.shape[0])),
                                         height), interpolation=cv2.INTER_AREA))
    return pieces


def _small_text(canvas, rng, x0, y0, width, height, colour):
    word = WORDS[rng.integers(len(WORDS))]
    size = max(6, int(height))
    font = ImageFont.truetype(fonts()[rng.integers(len(fonts()))], size=size)
    image = Image.fromarray(canvas)
    draw = ImageDraw.Draw(image)
    tw = draw.textlength(word, font=font)
    draw.text((x0 + max(0, (width - tw) / 2), y0), word, fill=int(colour), font=font)
    canvas[:] = np.array(image)


def render_plate(rng, text=None, two_rows=False):
    """A plate straight on, grey, with its text (separators never part of the text).

    Returns (image, text, box of the characters)."""
    text = text or random_text(rng)
    ch = 48
    if rng.random() < 0.35:
        glyphs = _hershey_glyphs(text, HERSHEY[rng.integers(len(HERSHEY))], ch, rng)
    else:
        all_fonts = fonts()
        glyphs = _pil_glyphs(text, all_fonts[rng.integers(len(all_fonts))], ch, rng)
    squeeze = rng.uniform(0.7, 1.25)
    glyphs = [cv2.resize(g, (max(1, int(g.shape[1] * squeeze)), ch)) for g in glyphs]
    gap = int(ch * rng.uniform(0.06, 0.3))
    separator_at = rng.integers(2, len(text) - 1) if rng.random() < 0.3 else -1
    rows = [glyphs]
    if two_rows:
        cut = len(glyphs) // 2 if len(glyphs) < 7 else 3
        rows = [glyphs[:cut], glyphs[cut:]]
        separator_at = -1
    row_widths = [sum(g.shape[1] for g in r) + gap * (len(r) - 1) + (ch // 2 if separator_at >= 0 else 0)
                  for r in rows]
    margin_x = int(ch * rng.uniform(0.25, 0.9))
    top = int(ch * rng.uniform(0.2, 0.8))
    bottom = int(ch * rng.uniform(0.2, 0.7))
    width = max(row_widths) + 2 * margin_x
    row_gap = int(ch * 0.25)
    height = top + bottom + ch * len(rows) + row_gap * (len(rows) - 1)
    dark_ground = rng.random() < 0.2
    ground = rng.uniform(20, 90) if dark_ground else rng.uniform(150, 255)
    ink = rng.uniform(190, 255) if dark_ground else rng.uniform(0, 90)
    plate = np.full((height, width), ground, np.float32)
    if rng.random() < 0.5:  # a gradient or picture across the ground, as on many US plates
        gx = np.linspace(0, 1, width)[None, :] * rng.uniform(-40, 40)
        gy = np.linspace(0, 1, height)[:, None] * rng.uniform(-40, 40)
        plate += gx + gy
    y = top
    for r, row in enumerate(rows):
        x = margin_x + (max(row_widths) - row_widths[r]) // 2
        for i, g in enumerate(row):
            alpha = g.astype(np.float32) / 255.0
            region = plate[y:y + ch, x:x + g.shape[1]]
            region[:] = region * (1 - alpha) + ink * alpha
            x += g.shape[1] + gap
            if r == 0 and i + 1 == separator_at:
                cv2.rectangle(plate, (x, y + ch // 2 - ch // 16), (x + ch // 4, y + ch // 2 + ch // 16),
                              float(ink), -1)
                x += ch // 2
        y += ch + row_gap
    char_box = (margin_x, top, max(row_widths), ch * len(rows) + row_gap * (len(rows) - 1))
    plate = np.clip(plate, 0, 255).astype(np.uint8)
    if not dark_ground and rng.random() < 0.3:
        plate = _with_band(plate, rng)
    if rng.random() < 0.6:
        _small_text(plate, rng, 0, max(1, int(top * 0.15)), width, top * 0.7, ink)
    if rng.random() < 0.4:
        _small_text(plate, rng, 0, height - bottom + int(bottom * 0.15), width, bottom * 0.65, ink)
    if rng.random() < 0.7:
        cv2.rectangle(plate, (0, 0), (width - 1, height - 1), float(ink), max(1, int(ch * rng.uniform(0.02, 0.1))))
    return plate, text, char_box


# European group layouts: L a letter, N a digit; between groups "-" a hyphen, " " a gap,
# "*" an emblem (seals, a coat of arms).
EUROPEAN_LAYOUTS = [
    "LL-NNN-LL", "LL NNN LL", "NNNN LLL", "LL NN LLL", "L*LL NNNN", "LL*L NNN", "LLL*LL NN",
    "LL*NNNN-LL", "LL*NNN-LL", "L*NNNNL", "LL NNNNN", "LLL NNNN", "NLN NNNN", "NN-LLL-N",
    "LLNN LLL", "LL-NNNN", "NNN-LLL", "LL NNNN", "*LL NNNNN*", "NN LLL NN",
]


def _emblem(rng, width, height, ink):
    """Something between groups that is no character: two seals one above the other, or a
    shield with a pattern, in a grey of its own."""
    out = np.zeros((height, width), np.float32)
    alpha = np.zeros((height, width), np.float32)
    shade = rng.uniform(60, 190)
    if rng.random() < 0.5:
        r = max(2, int(min(width, height / 2) * rng.uniform(0.35, 0.48)))
        for cy in (height // 4, 3 * height // 4):
            cv2.circle(alpha, (width // 2, cy), r, 1.0, -1, cv2.LINE_AA)
            cv2.circle(out, (width // 2, cy), r, shade, -1, cv2.LINE_AA)
            cv2.circle(out, (width // 2, cy), max(1, r * 2 // 3), float(ink), max(1, r // 6), cv2.LINE_AA)
    else:
        w2, top, bottom = width * rng.uniform(0.32, 0.45), height * 0.12, height * 0.88
        pts = np.int32([[width / 2 - w2, top], [width / 2 + w2, top], [width / 2 + w2, height * 0.6],
                        [width / 2, bottom], [width / 2 - w2, height * 0.6]])
        cv2.fillPoly(alpha, [pts], 1.0, cv2.LINE_AA)
        pattern = rng.uniform(0, 1, (4, 3)) * 120 + shade - 60
        out[:] = cv2.resize(pattern.astype(np.float32), (width, height), interpolation=cv2.INTER_NEAREST)
        cv2.polylines(out, [pts], True, float(ink), max(1, width // 16), cv2.LINE_AA)
    return out, alpha


def render_european_plate(rng):
    """A European plate straight on, grey: groups apart by gaps, hyphens or emblems, the blue
    band at the left, at times a band at the right end too, narrow margins (the plate is four
    to five times as wide as high). Returns (image, text)."""
    layout = EUROPEAN_LAYOUTS[rng.integers(len(EUROPEAN_LAYOUTS))]
    text = "".join((LETTERS if k == "L" else DIGITS)[rng.integers(26 if k == "L" else 10)]
                   for k in layout if k in "LN")
    ch = 48
    all_fonts = fonts()
    glyphs = iter(_pil_glyphs(text, all_fonts[rng.integers(len(all_fonts))], ch, rng))
    squeeze = rng.uniform(0.7, 1.05)
    gap = int(ch * rng.uniform(0.05, 0.15))
    pieces = []  # (kind, glyph or width)
    for k in layout:
        if k in "LN":
            g = next(glyphs)
            pieces.append(("glyph", cv2.resize(g, (max(1, int(g.shape[1] * squeeze)), ch))))
        else:
            pieces.append((k, int(ch * {"-": 0.45, " ": 0.35, "*": 0.7}[k])))
    margin_x = int(ch * rng.uniform(0.12, 0.35))
    top = int(ch * rng.uniform(0.12, 0.3))
    bottom = int(ch * rng.uniform(0.12, 0.3))
    inner = sum((p[1].shape[1] if p[0] == "glyph" else p[1]) + gap for p in pieces) - gap
    width, height = inner + 2 * margin_x, top + bottom + ch
    ground = rng.uniform(170, 255)
    ink = rng.uniform(0, 60)
    plate = np.full((height, width), ground, np.float32)
    x = margin_x
    for kind, piece in pieces:
        if kind == "glyph":
            alpha = piece.astype(np.float32) / 255.0
            region = plate[top:top + ch, x:x + piece.shape[1]]
            region[:] = region * (1 - alpha) + ink * alpha
            x += piece.shape[1] + gap
            continue
        if kind == "-":
            cv2.rectangle(plate, (x + piece // 4, top + ch // 2 - ch // 14),
                          (x + 3 * piece // 4, top + ch // 2 + ch // 14), float(ink), -1)
        elif kind == "*":
            emblem, alpha = _emblem(rng, piece, ch, ink)
            region = plate[top:top + ch, x:x + piece]
            region[:] = region * (1 - alpha) + emblem * alpha
        x += piece + gap
    if rng.random() < 0.25:  # a band at the right end, with a number or a year in it
        band = int(height * rng.uniform(0.3, 0.42))
        plate = np.concatenate([plate, np.full((height, band), rng.uniform(35, 80), np.float32)], axis=1)
        label = f"{rng.integers(1, 99):02d}" if rng.random() < 0.5 else f"{rng.integers(1995, 2030)}"
        (tw, _), _ = cv2.getTextSize(label, cv2.FONT_HERSHEY_SIMPLEX, 1.0, 2)
        scale = min(height / 110.0, band * 0.85 / tw)
        cv2.putText(plate, label, (width + max(1, int((band - tw * scale) / 2)), int(height * 0.85)),
                    cv2.FONT_HERSHEY_SIMPLEX, scale, 230.0, max(1, int(2 * scale)), cv2.LINE_AA)
    plate = _with_band(np.clip(plate, 0, 255).astype(np.uint8), rng)
    if rng.random() < 0.7:
        cv2.rectangle(plate, (0, 0), (plate.shape[1] - 1, height - 1), float(ink),
                      max(1, int(ch * rng.uniform(0.02, 0.08))))
    return plate, text


def _with_band(plate, rng):
    """The blue band of European plates on the left, seen in grey: dark, with a small
    country code in light letters and a ring of stars above it."""
    h, w = plate.shape
    band = max(4, int(h * rng.uniform(0.3, 0.42)))
    out = np.concatenate([np.full((h, band), rng.uniform(35, 80), np.float32),
                          plate.astype(np.float32)], axis=1)
    code = ["I", "F", "D", "E", "NL", "GB", "B", "P", "CH", "A", "PL", "CZ"][rng.integers(12)]
    canvas = np.zeros((h, band), np.uint8)
    scale = h / 110.0
    cv2.putText(canvas, code, (max(1, band // 2 - int(len(code) * 9 * scale)), int(h * 0.88)),
                cv2.FONT_HERSHEY_SIMPLEX, 0.9 * scale, 255, max(1, int(2 * scale)), cv2.LINE_AA)
    cv2.circle(canvas, (band // 2, int(h * 0.3)), max(2, int(h * 0.14)), 200, max(1, int(scale * 2)))
    alpha = canvas.astype(np.float32) / 255.0
    out[:, :band] = out[:, :band] * (1 - alpha) + 230 * alpha
    return np.clip(out, 0, 255).astype(np.uint8)


def degrade(grey, rng, strength=1.0):
    """Camera faults: blur, noise, lighting, JPEG loss."""
    out = grey.astype(np.float32)
    if rng.random() < 0.5 * strength:
        out = cv2.GaussianBlur(out, (0, 0), rng.uniform(0.3, 1.6))
    if rng.random() < 0.2 * strength:
        k = int(rng.integers(3, 7))
        kernel = np.zeros((k, k), np.float32)
        kernel[k // 2, :] = 1.0 / k
        out = cv2.filter2D(out, -1, kernel)  # motion
    contrast = rng.uniform(0.45, 1.2)
    out = (out - 128) * contrast + 128 + rng.uniform(-60, 60)
    if rng.random() < 0.3:  # uneven light
        h, w = out.shape
        gx = np.linspace(-1, 1, w)[None, :] * rng.uniform(-50, 50)
        out += gx
    out += rng.normal(0, rng.uniform(0, 10) * strength, out.shape)
    out = np.clip(out, 0, 255).astype(np.uint8)
    if rng.random() < 0.5:
        ok, enc = cv2.imencode(".jpg", out, [cv2.IMWRITE_JPEG_QUALITY, int(rng.integers(25, 90))])
        out = cv2.imdecode(enc, cv2.IMREAD_GRAYSCALE)
    return out


def warp_plate(plate, rng, max_tilt=15.0):
    """A plate turned and seen at an angle. Returns the warped image with its mask and the
    four corners of the plate in it."""
    h, w = plate.shape
    angle = np.deg2rad(rng.uniform(-max_tilt, max_tilt))
    shear = rng.uniform(-0.25, 0.25)
    yaw = rng.uniform(0.75, 1.0)
    src = np.float32([[0, 0], [w, 0], [w, h], [0, h]])
    c, s = np.cos(angle), np.sin(angle)
    pts = []
    for x, y in src:
        x2 = (x - w / 2) * yaw + shear * (y - h / 2)
        y2 = y - h / 2
        pts.append([x2 * c - y2 * s, x2 * s + y2 * c])
    pts = np.float32(pts)
    pts += rng.uniform(-0.04, 0.04, pts.shape).astype(np.float32) * h
    pts -= pts.min(axis=0)
    pts += 2
    size = (int(pts[:, 0].max()) + 3, int(pts[:, 1].max()) + 3)
    m = cv2.getPerspectiveTransform(src, pts)
    warped = cv2.warpPerspective(plate, m, size, flags=cv2.INTER_LINEAR)
    mask = cv2.warpPerspective(np.full_like(plate, 255), m, size, flags=cv2.INTER_LINEAR)
    return warped, mask, pts


def reader_input(grey, box):
    """The cut the reader is given for a plate box (x, y, w, h) in a grey picture: the box with
    12% of its width and height around it, squeezed to the reader's size."""
    x, y, w, h = box
    mx, my = 0.12 * w, 0.12 * h
    x0, y0 = max(0, int(x - mx)), max(0, int(y - my))
    x1, y1 = min(grey.shape[1], int(x + w + mx)), min(grey.shape[0], int(y + h + my))
    if x1 - x0 < 2 or y1 - y0 < 2:
        return None
    cut = grey[y0:y1, x0:x1]
    return cv2.resize(cut, READER_SIZE, interpolation=cv2.INTER_AREA if cut.shape[0] > 32 else cv2.INTER_LINEAR)


def reader_input_two_rows(grey, box):
    """The cut for a plate of two rows: its upper and lower rows side by side, so that the
    reader reads them as one line, upper row first."""
    x, y, w, h = box
    upper = reader_input(grey, (x, y, w, h * 0.56))
    lower = reader_input(grey, (x, y + h * 0.44, w, h * 0.56))
    if upper is None or lower is None:
        return None
    half = (READER_SIZE[0] // 2, READER_SIZE[1])
    return np.hstack([cv2.resize(upper, half, interpolation=cv2.INTER_AREA),
                      cv2.resize(lower, half, interpolation=cv2.INTER_AREA)])


def jitter_box(box, rng, amount=0.08):
    x, y, w, h = box
    dx0, dx1 = rng.uniform(-amount, amount, 2) * w
    dy0, dy1 = rng.uniform(-amount * 1.5, amount * 1.5, 2) * h
    return (x + dx0, y + dy0, w - dx0 + dx1, h - dy0 + dy1)


def synthetic_reader_sample(rng, backgrounds, european_share=0.0):
    two_rows = rng.random() < 0.12
    if european_share > 0 and not two_rows and rng.random() < european_share:
        plate, text = render_european_plate(rng)
    else:
        plate, text, _ = render_plate(rng, two_rows=two_rows)
    scale = rng.uniform(14, 60) / 48.0  # character height 14 to 60 px
    plate = cv2.resize(plate, None, fx=scale, fy=scale, interpolation=cv2.INTER_AREA)
    warped, mask, pts = warp_plate(plate, rng, max_tilt=8.0)
    pad = int(warped.shape[0] * 0.6) + 4
    bg = random_background(backgrounds, rng, (warped.shape[1] + 2 * pad, warped.shape[0] + 2 * pad))
    alpha = mask.astype(np.float32) / 255.0
    region = bg[pad:pad + warped.shape[0], pad:pad + warped.shape[1]].astype(np.float32)
    bg[pad:pad + warped.shape[0], pad:pad + warped.shape[1]] = (region * (1 - alpha) + warped * alpha).astype(np.uint8)
    xs, ys = pts[:, 0] + pad, pts[:, 1] + pad
    box = (xs.min(), ys.min(), xs.max() - xs.min(), ys.max() - ys.min())
    scene = degrade(bg, rng)
    cut = reader_input_two_rows if two_rows else reader_input
    return cut(scene, jitter_box(box, rng)), text


def random_background(backgrounds, rng, size):
    w, h = size
    if backgrounds and rng.random() < 0.8:
        src = backgrounds[rng.integers(len(backgrounds))]
        if src.shape[0] > h + 1 and src.shape[1] > w + 1:
            y = rng.integers(src.shape[0] - h)
            x = rng.integers(src.shape[1] - w)
            return src[y:y + h, x:x + w].copy()
    bg = np.full((h, w), rng.uniform(30, 220), np.float32)
    bg += rng.normal(0, 12, (h, w))
    return np.clip(bg, 0, 255).astype(np.uint8)


def load_grey(path, max_width=None):
    grey = cv2.imread(path, cv2.IMREAD_GRAYSCALE)
    if grey is None:
        raise SystemExit("cannot read " + path)
    return grey
