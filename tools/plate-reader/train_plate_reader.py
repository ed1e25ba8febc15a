#!/usr/bin/python3
"""Trains PlateCore's two networks and writes them as ONNX beside the plug-in's sources.

    tools/plate-reader/train_plate_reader.py --sets ../shared/plates/br ../shared/plates/us

The detector finds plates in a grey picture scaled to at most 640 pixels wide (a heat map of
plate centres with their sizes, one cell every 4 pixels); the reader turns a plate cut,
squeezed to 128x32, into a sequence of 32 character columns decoded with CTC.

Training data: synthetic plates rendered by platedata.py (nothing is downloaded) and the
annotated photographs of the given folders. A fixed quarter of each folder is held out and
never trained on; the figures printed at the end on that quarter are the honest estimate.
Needs Debian's python3-torch, python3-opencv, python3-onnx and the font packages named in
the README. Runs on the CPU; the seed fixes everything.
"""
import argparse
import multiprocessing as mp
import os
import time

import cv2
import numpy as np
import onnx
import torch
import torch.nn as nn
import torch.nn.functional as F

import platedata as pdata

HERE = os.path.dirname(os.path.abspath(__file__))
MODELS = os.path.join(HERE, "..", "..", "sample-plugins", "lpr", "models")
DETECTOR_PATCH = 256
STRIDE = 4


def conv_bn(i, o, k=3, s=1, d=1, groups=1):
    return nn.Sequential(nn.Conv2d(i, o, k, s, padding=d * (k // 2), dilation=d, groups=groups, bias=False),
                         nn.BatchNorm2d(o), nn.ReLU(inplace=True))


def separable(i, o, s=1, d=1):
    return nn.Sequential(conv_bn(i, i, 3, s, d, groups=i), conv_bn(i, o, 1))


class Reader(nn.Module):
    """128x32 plate cut to 37 scores (blank and 36 characters) for each of 32 columns."""

    def __init__(self):
        super().__init__()
        self.features = nn.Sequential(
            conv_bn(1, 16), nn.MaxPool2d(2),  # 64x16
            conv_bn(16, 32), nn.MaxPool2d(2),  # 32x8
            conv_bn(32, 64), conv_bn(64, 64), nn.MaxPool2d((2, 1)),  # 32x4
            conv_bn(64, 96),
            nn.Conv2d(96, 128, (4, 1), bias=False), nn.BatchNorm2d(128), nn.ReLU(inplace=True),  # 32x1
            nn.Conv2d(128, 128, (1, 3), padding=(0, 1), bias=False), nn.BatchNorm2d(128), nn.ReLU(inplace=True),
            nn.Dropout(0.1),
            nn.Conv2d(128, len(pdata.ALPHABET) + 1, 1))

    def forward(self, x):
        return self.features(x)  # N x 37 x 1 x 32


class Detector(nn.Module):
    """Grey picture (multiple of 16 on each side) to 5 maps at a quarter of its size: plate
    centre score (before the sigmoid), centre offset x and y in cells, log width and height in
    cells."""

    def __init__(self):
        super().__init__()
        self.stem = nn.Sequential(conv_bn(1, 16, 3, 2), separable(16, 32, 2), separable(32, 32))
        self.eighth = nn.Sequential(separable(32, 64, 2), separable(64, 64, d=2))
        # A sixteenth for the width of large plates: the centre must see both ends.
        self.sixteenth = nn.Sequential(separable(64, 96, 2), separable(96, 96, d=2), separable(96, 96, d=4),
                                       conv_bn(96, 64, 1))
        self.down = conv_bn(64, 32, 1)
        self.fuse = separable(32, 32)
        self.head = nn.Conv2d(32, 5, 1)
        self.head.bias.data[0] = -4.0

    def forward(self, x):
        quarter = self.stem(x)
        eighth = self.eighth(quarter)
        eighth = eighth + F.interpolate(self.sixteenth(eighth), scale_factor=2, mode="nearest")
        deep = F.interpolate(self.down(eighth), scale_factor=2, mode="nearest")
        return self.head(self.fuse(quarter + deep))


# ---------------------------------------------------------------------------------------
# data pools, made once in worker processes


def _real_images(samples):
    return {path: pdata.load_grey(path) for path, _, _ in samples}


def _reader_real(args):
    seed, samples, count, found = args
    rng = np.random.default_rng(seed)
    images = _real_images(samples)
    xs, ys = [], []
    for i in range(count):
        path, box, text = samples[i % len(samples)]
        grey = images[path]
        # Half the time the box the detector gives, so that the reader learns its errors.
        if path in found and rng.random() < 0.5:
            box = found[path]
        x, y, w, h = [int(round(v)) for v in box]
        pad = int(h * 1.5)
        x0, y0 = max(0, x - pad), max(0, y - pad)
        cut = grey[y0:y + h + pad, x0:x + w + pad]
        angle = rng.uniform(-6, 6)
        centre = (x - x0 + w / 2, y - y0 + h / 2)
        m = cv2.getRotationMatrix2D(centre, angle, rng.uniform(0.8, 1.2))
        cut = cv2.warpAffine(cut, m, (cut.shape[1], cut.shape[0]), borderMode=cv2.BORDER_REPLICATE)
        scale = rng.uniform(0.4, 1.0) if h > 30 else 1.0  # smaller characters too
        if scale < 1.0:
            cut = cv2.resize(cut, None, fx=scale, fy=scale, interpolation=cv2.INTER_AREA)
        box2 = ((centre[0] - w / 2) * scale, (centre[1] - h / 2) * scale, w * scale, h * scale)
        cut = pdata.degrade(cut, rng, 0.5)
        sample = pdata.reader_input(cut, pdata.jitter_box(box2, rng))
        if sample is not None:
            xs.append(sample)
            ys.append(text)
    return xs, ys


def _reader_synthetic(args):
    seed, backgrounds, count, european = args
    rng = np.random.default_rng(seed)
    images = [pdata.load_grey(p) for p in backgrounds]
    xs, ys = [], []
    for _ in range(count):
        x, text = pdata.synthetic_reader_sample(rng, images, 0.2 if european else 0.0)
        if x is not None:
            xs.append(x)
            ys.append(text)
    return xs, ys


def _gaussian(heat, cx, cy, sigma):
    h, w = heat.shape
    ys, xs = np.ogrid[:h, :w]
    g = np.exp(-((xs - cx) ** 2 + (ys - cy) ** 2) / (2 * sigma * sigma))
    np.maximum(heat, g, out=heat)


def _paste_synthetic(patch, rng, boxes, european):
    if european and rng.random() < 0.3:
        plate, _ = pdata.render_european_plate(rng)
    else:
        plate, _, _ = pdata.render_plate(rng, two_rows=rng.random() < 0.1)
    width = np.exp(rng.uniform(np.log(16), np.log(170)))
    scale = width / plate.shape[1]
    plate = cv2.resize(plate, None, fx=scale, fy=scale, interpolation=cv2.INTER_AREA)
    if plate.shape[0] < 4:
        return
    warped, mask, pts = pdata.warp_plate(plate, rng, max_tilt=15.0)
    h, w = warped.shape
    if w >= patch.shape[1] - 2 or h >= patch.shape[0] - 2:
        return
    x = int(rng.integers(0, patch.shape[1] - w))
    y = int(rng.integers(0, patch.shape[0] - h))
    for bx, by, bw, bh in boxes:
        if x < bx + bw and bx < x + w and y < by + bh and by < y + h:
            return
    alpha = mask.astype(np.float32) / 255.0
    region = patch[y:y + h, x:x + w].astype(np.float32)
    patch[y:y + h, x:x + w] = (region * (1 - alpha) + warped * alpha).astype(np.uint8)
    xs, ys = pts[:, 0] + x, pts[:, 1] + y
    boxes.append((xs.min(), ys.min(), xs.max() - xs.min(), ys.max() - ys.min()))


def _patch_around(grey, box, scale, rng, size):
    """A size x size patch of the picture at scale: most often with the box inside it, else
    anywhere. Answers the patch and its top-left corner in the picture."""
    x, y, w, h = box
    span = size / scale
    if rng.random() < 0.85:  # the plate inside the patch
        px = x + w / 2 - rng.uniform(0.1, 0.9) * span
        py = y + h / 2 - rng.uniform(0.1, 0.9) * span
    else:
        px = rng.uniform(0, max(1, grey.shape[1] - span))
        py = rng.uniform(0, max(1, grey.shape[0] - span))
    m = np.float32([[scale, 0, -px * scale], [0, scale, -py * scale]])
    patch = cv2.warpAffine(grey, m, (size, size), flags=cv2.INTER_AREA if scale < 1 else cv2.INTER_LINEAR,
                           borderMode=cv2.BORDER_REFLECT)
    return patch, px, py


def _boxes_inside(boxes, px, py, scale, size):
    """The boxes in patch coordinates that lie (mostly) inside the patch."""
    inside = []
    for bx, by, bw, bh in boxes:
        bx, by, bw, bh = (bx - px) * scale, (by - py) * scale, bw * scale, bh * scale
        if bx > -bw * 0.3 and by > -bh * 0.3 and bx + bw * 0.7 < size and by + bh * 0.7 < size:
            inside.append((bx, by, bw, bh))
    return inside


def detector_target(boxes, size):
    cells = size // STRIDE
    target = np.zeros((5, cells, cells), np.float32)
    mask = np.zeros((cells, cells), np.float32)
    for x, y, w, h in boxes:
        cx, cy = (x + w / 2) / STRIDE, (y + h / 2) / STRIDE
        ix, iy = int(cx), int(cy)
        if not (0 <= ix < cells and 0 <= iy < cells):
            continue
        _gaussian(target[0], ix, iy, max(0.7, h / STRIDE / 3))
        target[1, iy, ix] = cx - ix
        target[2, iy, ix] = cy - iy
        target[3, iy, ix] = np.log(w / STRIDE)
        target[4, iy, ix] = np.log(h / STRIDE)
        mask[iy, ix] = 1
    return target, mask


def _add_sample(patch, boxes, rng, degrade, xs, ts, ms):
    """Mirrors half the patches (their boxes with them), degrades the patch and adds it with its
    target; the random draws are taken in this order for every kind of patch."""
    size = DETECTOR_PATCH
    if rng.random() < 0.5:
        patch = patch[:, ::-1].copy()
        boxes = [(size - bx - bw, by, bw, bh) for bx, by, bw, bh in boxes]
    patch = pdata.degrade(patch, rng, degrade)
    target, mask = detector_target(boxes, size)
    xs.append(patch)
    ts.append(target)
    ms.append(mask)


def _detector_patches(args):
    seed, samples, backgrounds, count, european = args
    rng = np.random.default_rng(seed)
    images = _real_images(samples)
    xs, ts, ms = [], [], []
    size = DETECTOR_PATCH
    for i in range(count):
        path, box, _ = samples[i % len(samples)]
        grey = images[path]
        x, y, w, h = box
        width = np.exp(rng.uniform(np.log(16), np.log(170)))
        scale = width / w
        patch, px, py = _patch_around(grey, box, scale, rng, size)
        boxes = _boxes_inside([box], px, py, scale, size)
        for _ in range(int(rng.integers(0, 3))):
            _paste_synthetic(patch, rng, boxes, european)
        _add_sample(patch, boxes, rng, 0.6, xs, ts, ms)
    return xs, ts, ms


def _box_patches(args):
    """Patches of real road frames whose every plate is boxed (no text): each plate inside the
    patch is a target, so the detector learns real scenes, by day and by night, at real sizes."""
    seed, frames, count = args
    rng = np.random.default_rng(seed)
    images = {path: pdata.load_grey(path) for path, _ in frames}
    xs, ts, ms = [], [], []
    size = DETECTOR_PATCH
    for i in range(count):
        path, boxes = frames[i % len(frames)]
        grey = images[path]
        x, y, w, h = boxes[int(rng.integers(len(boxes)))]
        # Mostly at the scale the plug-in gives such a frame, at times larger or smaller.
        width = float(np.clip(w * input_scale(grey.shape[1]) * np.exp(rng.uniform(-0.7, 1.0)), 12, 170))
        scale = width / w
        patch, px, py = _patch_around(grey, (x, y, w, h), scale, rng, size)
        _add_sample(patch, _boxes_inside(boxes, px, py, scale, size), rng, 0.4, xs, ts, ms)
    return xs, ts, ms


def pooled(fn, jobs, workers):
    with mp.Pool(workers) as pool:
        parts = pool.map(fn, jobs)
    return [sum((p[k] for p in parts), []) for k in range(len(parts[0]))]


# ---------------------------------------------------------------------------------------
# training


def encode(texts):
    labels = [torch.tensor([pdata.ALPHABET.index(c) + 1 for c in t if c in pdata.ALPHABET]) for t in texts]
    return torch.cat(labels), torch.tensor([len(l) for l in labels])


def greedy(scores):
    """scores: T x 37. Returns the text with the blank and repeats removed."""
    best = scores.argmax(1).tolist()
    out, last = [], 0
    for k in best:
        if k != last and k != 0:
            out.append(pdata.ALPHABET[k - 1])
        last = k
    return "".join(out)


def fresh_or_from(network, start_from, log):
    """A new network, or one that goes on from saved weights."""
    model = network()
    if start_from is not None:
        model.load_state_dict(torch.load(start_from))
        log(f"{network.__name__.lower()} starts from {start_from}")
    return model


def train_reader(xs, ys, steps, seed, log, start_from=None, max_lr=3e-3):
    torch.manual_seed(seed)
    model = fresh_or_from(Reader, start_from, log)
    data = torch.from_numpy(np.stack(xs)).float().div(255.0).unsqueeze(1)
    opt = torch.optim.AdamW(model.parameters(), lr=2e-3, weight_decay=1e-4)
    sched = torch.optim.lr_scheduler.OneCycleLR(opt, max_lr=max_lr, total_steps=steps, pct_start=0.1)
    ctc = nn.CTCLoss(blank=0, zero_infinity=True)
    gen = torch.Generator().manual_seed(seed)
    model.train()
    start = time.time()
    for step in range(steps):
        idx = torch.randint(len(xs), (96,), generator=gen)
        batch = data[idx]
        batch = (batch - 0.5) / 0.5
        out = model(batch).squeeze(2).permute(2, 0, 1).log_softmax(2)  # T N C
        targets, lengths = encode([ys[i] for i in idx.tolist()])
        loss = ctc(out, targets, torch.full((len(idx),), out.shape[0], dtype=torch.long), lengths)
        opt.zero_grad()
        loss.backward()
        opt.step()
        sched.step()
        if step % 200 == 0:
            log(f"reader step {step}/{steps} loss {loss.item():.3f} {time.time() - start:.0f} s")
    model.eval()
    return model


def focal(pred, target):
    p = torch.sigmoid(pred).clamp(1e-4, 1 - 1e-4)
    pos = target.eq(1).float()
    neg = 1 - pos
    pos_loss = -torch.log(p) * (1 - p) ** 2 * pos
    neg_loss = -torch.log(1 - p) * p ** 2 * (1 - target) ** 4 * neg
    return (pos_loss.sum() + neg_loss.sum()) / pos.sum().clamp(min=1)


def train_detector(xs, ts, ms, steps, seed, log, start_from=None, max_lr=3e-3):
    torch.manual_seed(seed)
    model = fresh_or_from(Detector, start_from, log)
    data = torch.from_numpy(np.stack(xs))
    targets = torch.from_numpy(np.stack(ts))
    masks = torch.from_numpy(np.stack(ms))
    opt = torch.optim.AdamW(model.parameters(), lr=2e-3, weight_decay=1e-4)
    sched = torch.optim.lr_scheduler.OneCycleLR(opt, max_lr=max_lr, total_steps=steps, pct_start=0.1)
    gen = torch.Generator().manual_seed(seed + 1)
    model.train()
    start = time.time()
    for step in range(steps):
        idx = torch.randint(len(xs), (24,), generator=gen)
        batch = (data[idx].float().div(255.0).unsqueeze(1) - 0.5) / 0.5
        out = model(batch)
        t, m = targets[idx], masks[idx].unsqueeze(1)
        heat = focal(out[:, 0], t[:, 0])
        n = m.sum().clamp(min=1)
        geometry = (F.l1_loss(out[:, 1:3] * m, t[:, 1:3] * m, reduction="sum") +
                    F.l1_loss(out[:, 3:5] * m, t[:, 3:5] * m, reduction="sum")) / n
        loss = heat + 0.5 * geometry
        opt.zero_grad()
        loss.backward()
        opt.step()
        sched.step()
        if step % 200 == 0:
            log(f"detector step {step}/{steps} heat {heat.item():.3f} geometry {geometry.item():.3f} "
                f"{time.time() - start:.0f} s")
    model.eval()
    return model


# ---------------------------------------------------------------------------------------
# evaluation on held-out photographs, the way the plug-in reads them


def input_scale(width, min_char=6, max_char=120, limit=640):
    """As the plug-in scales a picture: plates of the character heights asked for come out
    between 20 and 160 pixels wide as far as the range allows, the picture at most 640 wide."""
    low = 20.0 / (4.0 * min_char)
    high = 160.0 / (7.0 * max_char)
    return min(1.0, np.sqrt(low * high), limit / width)


def detect(model, grey, max_plates=4):
    scale = input_scale(grey.shape[1])
    w = max(16, int(round(grey.shape[1] * scale / 16)) * 16)
    h = max(16, int(round(grey.shape[0] * scale / 16)) * 16)
    small = cv2.resize(grey, (w, h), interpolation=cv2.INTER_AREA)
    sx, sy = grey.shape[1] / w, grey.shape[0] / h
    with torch.no_grad():
        out = model((torch.from_numpy(small).float().div(255.0)[None, None] - 0.5) / 0.5)[0]
    heat = torch.sigmoid(out[0])
    peaks = (heat == F.max_pool2d(heat[None, None], 3, 1, 1)[0, 0]) & (heat > 0.2)
    found = []
    for iy, ix in peaks.nonzero().tolist():
        cx = (ix + out[1, iy, ix].item()) * STRIDE
        cy = (iy + out[2, iy, ix].item()) * STRIDE
        bw = np.exp(out[3, iy, ix].item()) * STRIDE
        bh = np.exp(out[4, iy, ix].item()) * STRIDE
        found.append((heat[iy, ix].item(), ((cx - bw / 2) * sx, (cy - bh / 2) * sy, bw * sx, bh * sy)))
    found.sort(key=lambda f: -f[0])
    return found[:max_plates]


def read_cut(model, cut):
    x = (torch.from_numpy(cut).float().div(255.0)[None, None] - 0.5) / 0.5
    with torch.no_grad():
        scores = model(x)[0, :, 0].t().softmax(1)
    text = greedy(scores)
    return text, scores.max(1).values.log().sum().item()


def iou(a, b):
    ax, ay, aw, ah = a
    bx, by, bw, bh = b
    w = max(0.0, min(ax + aw, bx + bw) - max(ax, bx))
    h = max(0.0, min(ay + ah, by + bh) - max(ay, by))
    return w * h / (aw * ah + bw * bh - w * h)


def detected_boxes(detector, samples):
    """For each photograph, the detector's box that best covers the annotated plate."""
    found = {}
    for path, box, _ in samples:
        grey = pdata.load_grey(path)
        candidates = [(iou(b, box), b) for _, b in detect(detector, grey)]
        best = max(candidates) if candidates else None
        if best and best[0] > 0.3:
            found[path] = best[1]
    return found


def recall(detector, frames, log, name):
    """The share of boxed plates the detector finds (a box with IoU >= 0.5), by day and by
    night apart."""
    counts = {False: [0, 0], True: [0, 0]}
    for path, boxes in frames:
        found = [b for _, b in detect(detector, pdata.load_grey(path))]
        tally = counts[pdata.BoxSet.by_night(path)]
        for box in boxes:
            tally[1] += 1
            tally[0] += any(iou(box, b) >= 0.5 for b in found)
    for night, (hit, total) in counts.items():
        if total:
            log(f"{name} {'night' if night else 'day'}: {hit} of {total} plates found, "
                f"recall {100.0 * hit / total:.1f}%")
    hit, total = counts[False][0] + counts[True][0], counts[False][1] + counts[True][1]
    log(f"{name}: recall {100.0 * hit / max(1, total):.1f}% of {total} plates")
    return hit / max(1, total)


def evaluate(detector, reader, samples, log, name):
    right = found = 0
    for path, box, plate in samples:
        grey = pdata.load_grey(path)
        best = None
        for heat, b in detect(detector, grey):
            cut = pdata.reader_input(grey, b)
            if cut is None:
                continue
            text, conf = read_cut(reader, cut)
            if 4 <= len(text) <= 10 and (best is None or conf + np.log(heat) > best[0]):
                best = (conf + np.log(heat), text)
        if best is not None:
            found += 1
            right += best[1] == plate
    n = max(1, len(samples))
    log(f"{name}: {len(samples)} pictures, top-1 {100.0 * right / n:.1f}%, nothing read "
        f"{100.0 * (n - found) / n:.1f}%")
    return right / n


def export(model, shape, path):
    torch.onnx.export(model, torch.zeros(shape), path, opset_version=11, input_names=["picture"],
                      output_names=["scores"], dynamic_axes={"picture": {2: "h", 3: "w"}, "scores": {2: "h", 3: "w"}}
                      if isinstance(model, Detector) else None)
    # The exporter shares equal constants through Identity nodes, which OpenCV's importer
    # cannot take: each becomes a constant of its own.
    graph = onnx.load(path)
    constants = {c.name: c for c in graph.graph.initializer}
    for node in [n for n in graph.graph.node if n.op_type == "Identity" and n.input[0] in constants]:
        copy = onnx.TensorProto()
        copy.CopyFrom(constants[node.input[0]])
        copy.name = node.output[0]
        graph.graph.initializer.append(copy)
        graph.graph.node.remove(node)
    onnx.save(graph, path)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--sets", nargs="+", required=True, help="folders of annotated photographs")
    parser.add_argument("--seed", type=int, default=7)
    parser.add_argument("--reader-steps", type=int, default=6000)
    parser.add_argument("--detector-steps", type=int, default=6000)
    parser.add_argument("--synthetic", type=int, default=60000, help="synthetic plates for the reader")
    parser.add_argument("--patches", type=int, default=12000, help="detector training patches")
    parser.add_argument("--workers", type=int, default=2)
    parser.add_argument("--only", choices=["reader", "detector"], help="train one network")
    parser.add_argument("--european", action="store_true",
                        help="render European plates (band, groups, emblems) for 3 in 10 of the "
                             "detector's pasted plates and 2 in 10 of the reader's; not how the "
                             "shipped networks were trained (see the README)")
    parser.add_argument("--reader-from", help="go on training the reader from these weights (.pt) "
                                                 "instead of starting afresh")
    parser.add_argument("--reader-lr", type=float, default=3e-3, help="the reader's highest learning rate")
    parser.add_argument("--detector-from", help="go on training the detector from these weights (.pt)")
    parser.add_argument("--detector-lr", type=float, default=3e-3, help="the detector's highest learning rate")
    parser.add_argument("--models", default=MODELS, help="folder the networks are read from and written to")
    parser.add_argument("--box-sets", nargs="*", default=[],
                        help="folders of road frames with plate boxes only, each with train/ and "
                             "valid/: the detector also learns from train/, its recall on valid/ "
                             "is printed")
    parser.add_argument("--box-share", type=float, default=0.5,
                        help="share of the detector's patches cut from the box sets' frames")
    parser.add_argument("--recall-only", action="store_true",
                        help="print the recall of the models folder's detector on the box sets' "
                             "valid/ and stop")
    args = parser.parse_args()
    torch.set_num_threads(args.workers)
    models = args.models
    os.makedirs(models, exist_ok=True)
    log_path = os.path.join(models, "training.log")
    logfile = open(log_path, "a", encoding="utf-8")

    def log(line):
        print(line, flush=True)
        logfile.write(line + "\n")
        logfile.flush()

    box_train = sum((pdata.BoxSet(os.path.join(f, "train")).frames for f in args.box_sets), [])
    box_valid = sum((pdata.BoxSet(os.path.join(f, "valid")).frames for f in args.box_sets), [])
    if args.recall_only:
        detector = Detector()
        detector.load_state_dict(torch.load(os.path.join(models, "plate_detector.pt")))
        detector.eval()
        recall(detector, box_valid, log, "box sets valid")
        return
    sets = [pdata.DevSet(folder) for folder in args.sets]
    train = sum((s.split(True) for s in sets), [])
    log(f"seed {args.seed}, {len(train)} training photographs, held out: "
        + ", ".join(f"{os.path.basename(f.rstrip('/'))} {len(s.split(False))}" for f, s in zip(args.sets, sets)))
    backgrounds = [p for p, _, _ in train]
    start = time.time()
    w = args.workers
    detector = None
    detector_file = os.path.join(models, "plate_detector.pt")
    if args.only == "reader" and os.path.exists(detector_file):
        detector = Detector()
        detector.load_state_dict(torch.load(detector_file))
        detector.eval()
    if args.only != "detector":
        found = detected_boxes(detector, train) if detector is not None else {}
        log(f"detector boxes for {len(found)} training photographs")
        xs, ys = pooled(_reader_synthetic, [(args.seed * 100 + k, backgrounds[k::w], args.synthetic // w,
                                             args.european) for k in range(w)], w)
        rx, ry = pooled(_reader_real, [(args.seed * 100 + 50 + k, train[k::w], 120 * len(train) // w, found)
                                       for k in range(w)], w)
        log(f"reader data: {len(xs)} synthetic, {len(rx)} from photographs, {time.time() - start:.0f} s")
        reader = train_reader(xs + rx, ys + ry, args.reader_steps, args.seed, log, args.reader_from, args.reader_lr)
        export(reader, (1, 1, 32, 128), os.path.join(models, "plate_reader.onnx"))
        torch.save(reader.state_dict(), os.path.join(models, "plate_reader.pt"))
    if args.only != "reader":
        boxed = int(args.patches * args.box_share) if box_train else 0
        dx, dt, dm = pooled(_detector_patches, [(args.seed * 100 + 80 + k, train[k::w], backgrounds,
                                                 (args.patches - boxed) // w, args.european) for k in range(w)], w)
        if boxed:
            bx, bt, bm = pooled(_box_patches, [(args.seed * 100 + 90 + k, box_train[k::w], boxed // w)
                                               for k in range(w)], w)
            dx, dt, dm = dx + bx, dt + bt, dm + bm
            log(f"detector data: {boxed} patches from {len(box_train)} boxed frames")
        log(f"detector data: {len(dx)} patches, {time.time() - start:.0f} s")
        detector = train_detector(dx, dt, dm, args.detector_steps, args.seed, log, args.detector_from,
                                  args.detector_lr)
        export(detector, (1, 1, 64, 64), os.path.join(models, "plate_detector.onnx"))
        torch.save(detector.state_dict(), os.path.join(models, "plate_detector.pt"))
        if box_valid:
            recall(detector, box_valid, log, "box sets valid")
    if args.only is None or (args.only == "reader" and detector is not None):
        for folder, s in zip(args.sets, sets):
            evaluate(detector, reader, s.split(False), log, os.path.basename(folder.rstrip("/")) + " held out")
    log(f"done in {time.time() - start:.0f} s")


if __name__ == "__main__":
    main()
