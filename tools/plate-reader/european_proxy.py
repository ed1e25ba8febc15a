#!/usr/bin/python3
"""Makes a folder of road photographs carrying European plates, from an annotated folder.

    tools/plate-reader/european_proxy.py SRC DST [--seed 1]

Every annotated plate of SRC is covered by a European plate drawn where it was, in the layout
of one of twelve countries with what sets them apart: the blue band and its code, the
seals between the German groups, the shields of Croatia, Serbia, Austria and Switzerland,
the hyphens of France and the Netherlands, the right-hand bands of France and Italy, the
yellow grounds of the Netherlands and Britain. The faces (DIN and Roboto Condensed, from
fonts-opendin and fonts-roboto-unhinted) are ones the reader's training never draws, so the
folder measures what those plates do to the reader, not how well it learnt the faces.
The scene, the plate's place, size and light are the photograph's; its own plate is painted
out and the European one drawn over the place.

Folders are in the plate bench's format. Needs Debian's python3-opencv and python3-pil.
"""
import argparse
import os

import cv2
import numpy as np
from PIL import Image, ImageDraw, ImageFont

import platedata

FACES = [
    "/usr/share/fonts/truetype/opendin/OSP-DIN.ttf",
    "/usr/share/fonts/truetype/roboto/unhinted/RobotoCondensed-Regular.ttf",
    "/usr/share/fonts/truetype/roboto/unhinted/RobotoCondensed-Bold.ttf",
    "/usr/share/fonts/truetype/roboto/unhinted/RobotoCondensed-Medium.ttf",
]
L = "ABCDEFGHJKLMNPRSTUVWXYZ"  # letters most countries issue (no I, O, Q)
N = "0123456789"

# Country: band code (None: no band), groups with what stands between them ("-" a hyphen,
# " " a gap, "seal" the German seals, "shield" a coat of arms), ground, right band.
COUNTRIES = {
    "D": ("D", [("L", 1, 3), "seal", ("L", 1, 2), " ", ("N", 1, 4)], 235, None),
    "F": ("F", [("L", 2, 2), "-", ("N", 3, 3), "-", ("L", 2, 2)], 235, "number"),
    "I": ("I", [("L", 2, 2), " ", ("N", 3, 3), " ", ("L", 2, 2)], 235, "small"),
    "E": ("E", [("N", 4, 4), " ", ("L", 3, 3)], 235, None),
    "HR": ("HR", [("L", 2, 2), "shield", ("N", 3, 4), "-", ("L", 1, 2)], 235, None),
    "SRB": ("SRB", [("L", 2, 2), "shield", ("N", 3, 4), "-", ("L", 2, 2)], 235, None),
    "A": ("A", [("L", 1, 2), "shield", ("N", 2, 5), ("L", 1, 2)], 235, None),
    "CH": (None, ["shield", ("L", 2, 2), " ", ("N", 3, 6), "shield"], 235, None),
    "PL": ("PL", [("L", 2, 3), " ", ("N", 4, 5)], 235, None),
    "CZ": ("CZ", [("N", 1, 1), ("L", 1, 1), ("N", 1, 1), " ", ("N", 4, 4)], 235, None),
    "NL": ("NL", [("N", 2, 2), "-", ("L", 3, 3), "-", ("N", 1, 1)], 190, None),
    "GB": ("GB", [("L", 2, 2), ("N", 2, 2), " ", ("L", 3, 3)], 200, None),
}

CH = 100  # character height the plate is drawn at before it is scaled to the photograph


def draw_plate(rng, country):
    code, groups, ground, right = COUNTRIES[country]
    font = ImageFont.truetype(FACES[rng.integers(len(FACES))], size=int(CH * 1.3))
    parts = []  # (kind, payload)
    text = ""
    for g in groups:
        if isinstance(g, tuple):
            pool, low, high = g
            chars = "".join((L if pool == "L" else N)[rng.integers(len(L if pool == "L" else N))]
                            for _ in range(rng.integers(low, high + 1)))
            text += chars
            parts.append(("text", chars))
        else:
            parts.append((g, None))
    widths = []
    for kind, payload in parts:
        if kind == "text":
            widths.append(int(font.getlength(payload)))
        else:
            widths.append({"-": CH // 2, " ": CH // 3, "seal": CH * 2 // 3, "shield": CH * 3 // 4}[kind])
    band = int(CH * 0.55) if code else 0
    right_band = int(CH * 0.55) if right else 0
    margin = CH // 5
    width = band + right_band + 2 * margin + sum(widths)
    height = int(CH * 1.42)
    image = Image.new("L", (width, height), ground)
    draw = ImageDraw.Draw(image)
    ink = int(rng.uniform(10, 40))
    top = (height - CH) // 2
    x = band + margin
    for (kind, payload), w in zip(parts, widths):
        if kind == "text":
            box = font.getbbox(payload)
            draw.text((x - box[0], top - box[1] + (CH - (box[3] - box[1])) // 2), payload, fill=ink, font=font)
        elif kind == "-":
            draw.rectangle((x + w // 4, top + CH // 2 - CH // 14, x + 3 * w // 4, top + CH // 2 + CH // 14), fill=ink)
        elif kind == "seal":
            r = w // 2 - 4
            for cy in (top + CH // 4, top + 3 * CH // 4):
                draw.ellipse((x + w // 2 - r, cy - r, x + w // 2 + r, cy + r), fill=int(rng.uniform(90, 170)),
                             outline=ink)
        elif kind == "shield":
            sx0, sy0, sx1, sy1 = x + 6, top + CH // 6, x + w - 6, top + CH * 5 // 6
            draw.rectangle((sx0, sy0, sx1, sy1), fill=int(rng.uniform(80, 160)), outline=ink, width=3)
            cell = max(4, (sx1 - sx0) // 4)
            for cy in range(sy0, sy1, cell):
                for cx in range(sx0 + ((cy - sy0) // cell % 2) * cell, sx1, 2 * cell):
                    draw.rectangle((cx, cy, min(cx + cell, sx1), min(cy + cell, sy1)), fill=ink + 40)
        x += w
    if code:
        draw.rectangle((0, 0, band, height), fill=int(rng.uniform(40, 70)))
        small = ImageFont.truetype(FACES[0], size=int(CH * 0.42))
        tw = small.getlength(code)
        draw.text(((band - tw) / 2, height * 0.55), code, fill=235, font=small)
        cx, cy, r = band // 2, int(height * 0.3), int(CH * 0.18)
        for k in range(12):
            a = 2 * np.pi * k / 12
            px, py = cx + r * np.cos(a), cy + r * np.sin(a)
            draw.ellipse((px - 2, py - 2, px + 2, py + 2), fill=200)
    if right:
        x0 = width - right_band
        draw.rectangle((x0, 0, width, height), fill=int(rng.uniform(40, 70)))
        small = ImageFont.truetype(FACES[0], size=int(CH * (0.42 if right == "number" else 0.25)))
        label = f"{rng.integers(1, 96):02d}" if right == "number" else f"{rng.integers(1999, 2025)}"
        draw.text((x0 + (right_band - small.getlength(label)) / 2, height * 0.62), label, fill=235, font=small)
    draw.rectangle((0, 0, width - 1, height - 1), outline=ink, width=4)
    return np.array(image), text


def paste(rng, scene, box, plate, light):
    """The plate over the photograph's one: its centre, a little wider, turned a few degrees."""
    x, y, w, h = box
    target_w = int(max(w * rng.uniform(1.0, 1.3), 8))
    target_h = max(4, int(target_w * plate.shape[0] / plate.shape[1]))
    small = cv2.resize(plate, (target_w, target_h), interpolation=cv2.INTER_AREA)
    angle = rng.uniform(-4, 4)
    m = cv2.getRotationMatrix2D((target_w / 2, target_h / 2), angle, 1.0)
    pad = target_h // 2 + 2
    m[:, 2] += pad
    size = (target_w + 2 * pad, target_h + 2 * pad)
    warped = cv2.warpAffine(small, m, size, flags=cv2.INTER_LINEAR)
    mask = cv2.warpAffine(np.full_like(small, 255), m, size, flags=cv2.INTER_LINEAR)
    cx, cy = x + w / 2, y + h / 2
    x0, y0 = int(cx - size[0] / 2), int(cy - size[1] / 2)
    sx0, sy0 = max(0, -x0), max(0, -y0)
    x0c, y0c = max(0, x0), max(0, y0)
    x1c, y1c = min(scene.shape[1], x0 + size[0]), min(scene.shape[0], y0 + size[1])
    if x1c <= x0c or y1c <= y0c:
        return None
    region = scene[y0c:y1c, x0c:x1c].astype(np.float32)
    alpha = mask[sy0:sy0 + y1c - y0c, sx0:sx0 + x1c - x0c].astype(np.float32) / 255.0
    content = warped[sy0:sy0 + y1c - y0c, sx0:sx0 + x1c - x0c].astype(np.float32)
    content = content * light
    scene[y0c:y1c, x0c:x1c] = np.clip(region * (1 - alpha) + content * alpha, 0, 255).astype(np.uint8)
    plate_box = (int(cx - target_w / 2), int(cy - target_h / 2), target_w, target_h)
    return plate_box


def light(channel, box):
    """The photograph's light on its plate: the drawn one is as bright as the one it covers was
    at its brightest."""
    x, y, w, h = box
    under = channel[max(0, y):max(0, y + h), max(0, x):max(0, x + w)]
    return min(1.2, max(0.4, np.percentile(under, 95) / 235.0)) if under.size else 1.0


def cover(image, box):
    """The photograph with its own plate painted out from the surroundings, so that no part of
    a plate of another shape shows around the one drawn."""
    x, y, w, h = box
    mask = np.zeros(image.shape[:2], np.uint8)
    grow = max(2, h // 8)
    cv2.rectangle(mask, (x - grow, y - grow), (x + w + grow, y + h + grow), 255, -1)
    return cv2.inpaint(image, mask, 5, cv2.INPAINT_TELEA)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("source")
    parser.add_argument("target")
    parser.add_argument("--seed", type=int, default=1)
    args = parser.parse_args()
    missing = [f for f in FACES if not os.path.exists(f)]
    if missing:
        raise SystemExit("missing faces: apt-get install fonts-opendin fonts-roboto-unhinted")
    rng = np.random.default_rng(args.seed)
    os.makedirs(args.target, exist_ok=True)
    countries = sorted(COUNTRIES)
    made = 0
    for path, box, _ in platedata.DevSet(args.source).samples:
        image = cv2.imread(path, cv2.IMREAD_COLOR)
        if image is None:
            continue
        country = countries[made % len(countries)]
        plate, text = draw_plate(rng, country)
        blur = rng.uniform(0.0, 1.0)
        if blur > 0.3:
            plate = cv2.GaussianBlur(plate, (0, 0), blur * CH / 40)
        colour = cover(image, box)
        placed = None
        for channel in range(3):
            layer = np.ascontiguousarray(colour[:, :, channel])
            placed = paste(np.random.default_rng(made), layer, box, plate, light(image[:, :, channel], box))
            colour[:, :, channel] = layer
        if placed is None:
            continue
        name = f"{country}-{os.path.splitext(os.path.basename(path))[0]}.jpg"
        cv2.imwrite(os.path.join(args.target, name), colour, [cv2.IMWRITE_JPEG_QUALITY, 85])
        with open(os.path.join(args.target, os.path.splitext(name)[0] + ".txt"), "w", encoding="utf-8") as f:
            f.write("\t".join([name] + [str(v) for v in placed] + [text]) + "\n")
        made += 1
    print(f"{made} pictures in {args.target}")


if __name__ == "__main__":
    main()
