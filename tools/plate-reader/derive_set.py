#!/usr/bin/python3
"""Makes a folder of annotated photographs from another, each picture scaled or cut closer.

    tools/plate-reader/derive_set.py SRC DST --width 1920
        every picture scaled to 1920 pixels wide (the plate bench's figure for full-HD frames)
    tools/plate-reader/derive_set.py SRC DST --plate-fraction 0.65 --width 800
        every picture cut to 4:3 around its plate so that the plate is 65% of its width (as a
        camera close to the barrier sees it), then scaled to 800 pixels wide

Folders are in the plate bench's format: NAME.jpg beside NAME.txt holding
"NAME.jpg<TAB>X<TAB>Y<TAB>W<TAB>H<TAB>PLATE". --held-out keeps only the quarter of pictures the
training script never trains on. Needs Debian's python3-opencv and python3-pil.
"""
import argparse
import os

import cv2

import platedata


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("source")
    parser.add_argument("target")
    parser.add_argument("--width", type=int, required=True, help="width of the pictures made")
    parser.add_argument("--plate-fraction", type=float, help="the plate's share of the picture's width")
    parser.add_argument("--held-out", action="store_true", help="only the quarter never trained on")
    args = parser.parse_args()
    os.makedirs(args.target, exist_ok=True)
    made = 0
    for image, (x, y, w, h), plate in platedata.DevSet(args.source).samples:
        if args.held_out and not platedata.DevSet.held_out(image):
            continue
        name = os.path.basename(image)
        picture = cv2.imread(image)
        if picture is None or w <= 0 or h <= 0:
            continue
        x0 = y0 = 0
        if args.plate_fraction:
            width = w / args.plate_fraction
            x0 = int(max(0, x + w / 2 - width / 2))
            y0 = int(max(0, y + h / 2 - width * 3 / 4 * 0.4))
            picture = picture[y0:int(y0 + width * 3 / 4), x0:int(x0 + width)]
        scale = args.width / picture.shape[1]
        picture = cv2.resize(picture, None, fx=scale, fy=scale,
                             interpolation=cv2.INTER_CUBIC if scale > 1 else cv2.INTER_AREA)
        cv2.imwrite(os.path.join(args.target, name), picture, [cv2.IMWRITE_JPEG_QUALITY, 92])
        box = [int(v * scale) for v in (x - x0, y - y0, w, h)]
        with open(os.path.join(args.target, os.path.splitext(name)[0] + ".txt"), "w", encoding="utf-8") as f:
            f.write("\t".join([name] + [str(v) for v in box] + [plate]) + "\n")
        made += 1
    print(f"{made} pictures in {args.target}")


if __name__ == "__main__":
    main()
