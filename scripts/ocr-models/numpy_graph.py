"""A small ONNX evaluator in numpy for the operators of the PP-OCRv4 detector and
recogniser. Debian's python3-onnx has no reference runtime; this one serves the graph
rewrite (to evaluate shape chains) and its test (to run the original graphs)."""

import numpy as np
from onnx import helper, mapping, numpy_helper


def _attrs(node):
    return {a.name: helper.get_attribute_value(a) for a in node.attribute}


def _pads4(attrs, rank):
    pads = list(attrs.get("pads", [0] * (2 * rank)))
    return pads[:rank], pads[rank:]


def _conv(x, w, b, attrs):
    n, c, h, wd = x.shape
    m, cg, kh, kw = w.shape
    group = attrs.get("group", 1)
    sh, sw = attrs.get("strides", [1, 1])
    dh, dw = attrs.get("dilations", [1, 1])
    (pt, pl), (pb, pr) = _pads4(attrs, 2)
    xp = np.pad(x, ((0, 0), (0, 0), (pt, pb), (pl, pr)))
    oh = (h + pt + pb - dh * (kh - 1) - 1) // sh + 1
    ow = (wd + pl + pr - dw * (kw - 1) - 1) // sw + 1
    # Columns [n, c, kh, kw, oh, ow] gathered by strided slices.
    cols = np.empty((n, c, kh, kw, oh, ow), dtype=np.float32)
    for i in range(kh):
        for j in range(kw):
            cols[:, :, i, j] = xp[:, :, i * dh:i * dh + sh * oh:sh, j * dw:j * dw + sw * ow:sw]
    out = np.empty((n, m, oh, ow), dtype=np.float32)
    mg = m // group
    for g in range(group):
        cg_cols = cols[:, g * cg:(g + 1) * cg].reshape(n, cg * kh * kw, oh * ow)
        wg = w[g * mg:(g + 1) * mg].reshape(mg, cg * kh * kw)
        out[:, g * mg:(g + 1) * mg] = np.einsum("mk,nkp->nmp", wg, cg_cols).reshape(n, mg, oh, ow)
    if b is not None:
        out += b.reshape(1, -1, 1, 1)
    return out


def _conv_transpose(x, w, b, attrs):
    # Only the decoder's form: group 1, kernel == stride, no padding.
    n, c, h, wd = x.shape
    _, m, kh, kw = w.shape
    assert attrs.get("group", 1) == 1 and list(attrs.get("strides")) == [kh, kw]
    assert not any(attrs.get("pads", [0, 0, 0, 0]))
    out = np.einsum("nchw,cmij->nmhiwj", x, w).reshape(n, m, h * kh, wd * kw)
    if b is not None:
        out += b.reshape(1, -1, 1, 1)
    return out


def _resize_nearest(x, scales, sizes, attrs):
    assert attrs.get("mode", b"nearest") == b"nearest"
    if sizes is not None and sizes.size:
        out = [int(s) for s in sizes]
    else:
        out = [int(np.floor(d * s)) for d, s in zip(x.shape, scales)]
    index = [np.minimum((np.arange(o) * d / o).astype(np.int64), d - 1) for o, d in zip(out, x.shape)]
    return x[np.ix_(*index)]


def _slice(x, starts, ends, axes, steps=None):
    index = [slice(None)] * x.ndim
    steps = steps if steps is not None else [1] * len(starts)
    for s, e, a, st in zip(starts, ends, axes, steps):
        index[int(a)] = slice(int(s), int(min(e, 2**62)), int(st))
    return x[tuple(index)]


def _reshape(x, shape):
    shape = [int(x.shape[i]) if int(d) == 0 else int(d) for i, d in enumerate(shape)]
    return x.reshape(shape)


def _softmax(x, axis):
    e = np.exp(x - x.max(axis=axis, keepdims=True))
    return e / e.sum(axis=axis, keepdims=True)


def _clip(x, inputs, attrs):
    low = inputs[1] if len(inputs) > 1 and inputs[1] is not None else attrs.get("min", -np.inf)
    high = inputs[2] if len(inputs) > 2 and inputs[2] is not None else attrs.get("max", np.inf)
    return np.clip(x, low, high)


def _average_pool(x, attrs):
    kh, kw = attrs["kernel_shape"]
    sh, sw = attrs.get("strides", [1, 1])
    assert not any(attrs.get("pads", [0, 0, 0, 0]))
    n, c, h, w = x.shape
    oh, ow = (h - kh) // sh + 1, (w - kw) // sw + 1
    out = np.zeros((n, c, oh, ow), dtype=np.float32)
    for i in range(kh):
        for j in range(kw):
            out += x[:, :, i:i + sh * oh:sh, j:j + sw * ow:sw]
    return out / (kh * kw)


def _batch_norm(x, scale, bias, mean, var, attrs):
    eps = attrs.get("epsilon", 1e-5)
    shape = (1, -1) + (1,) * (x.ndim - 2)
    k = scale / np.sqrt(var + eps)
    return x * k.reshape(shape) + (bias - mean * k).reshape(shape)


def run_node(node, inputs):
    a = _attrs(node)
    op = node.op_type
    x = inputs[0] if inputs else None
    if op == "Constant":
        return [numpy_helper.to_array(a["value"]) if "value" in a else np.array(a["value_float"])]
    simple = {
        "Add": lambda: x + inputs[1], "Sub": lambda: x - inputs[1], "Mul": lambda: x * inputs[1],
        "Div": lambda: x / inputs[1], "Pow": lambda: np.power(x, inputs[1]),
        "Sqrt": lambda: np.sqrt(x), "Relu": lambda: np.maximum(x, 0),
        "Sigmoid": lambda: 1 / (1 + np.exp(-x)), "MatMul": lambda: np.matmul(x, inputs[1]),
        "Shape": lambda: np.array(x.shape, dtype=np.int64),
        "GlobalAveragePool": lambda: x.mean(axis=(2, 3), keepdims=True),
        "HardSwish": lambda: x * np.clip(x / 6 + 0.5, 0, 1),
        "HardSigmoid": lambda: np.clip(a.get("alpha", 0.2) * x + a.get("beta", 0.5), 0, 1),
    }
    if op in simple:
        out = simple[op]()
    elif op == "Conv":
        out = _conv(x, inputs[1], inputs[2] if len(inputs) > 2 else None, a)
    elif op == "ConvTranspose":
        out = _conv_transpose(x, inputs[1], inputs[2] if len(inputs) > 2 else None, a)
    elif op == "BatchNormalization":
        out = _batch_norm(*inputs[:5], a)
    elif op == "Clip":
        out = _clip(x, inputs, a)
    elif op == "Resize":
        out = _resize_nearest(x, inputs[2] if len(inputs) > 2 else None,
                              inputs[3] if len(inputs) > 3 else None, a)
    elif op == "Concat":
        out = np.concatenate(inputs, axis=a["axis"])
    elif op == "Cast":
        out = x.astype(mapping.TENSOR_TYPE_TO_NP_TYPE[a["to"]])
    elif op == "Slice":
        if len(inputs) > 1:
            out = _slice(x, inputs[1], inputs[2], inputs[3] if len(inputs) > 3 else range(len(inputs[1])),
                         inputs[4] if len(inputs) > 4 else None)
        else:
            out = _slice(x, a["starts"], a["ends"], a.get("axes", range(len(a["starts"]))))
    elif op == "Reshape":
        out = _reshape(x, inputs[1])
    elif op == "Transpose":
        out = np.transpose(x, a["perm"])
    elif op == "ReduceMean":
        out = x.mean(axis=tuple(a["axes"]), keepdims=bool(a.get("keepdims", 1)))
    elif op == "Squeeze":
        out = np.squeeze(x, axis=tuple(a["axes"]))
    elif op == "Softmax":
        out = _softmax(x, a.get("axis", -1))
    elif op == "AveragePool":
        out = _average_pool(x, a)
    else:
        raise NotImplementedError(op)
    if isinstance(out, np.ndarray) and out.dtype == np.float64:
        out = out.astype(np.float32)
    return [out]


def run(model, feeds, wanted=None):
    """Evaluates `model` on `feeds` (name -> array); returns every value computed, or
    only the names in `wanted` when given."""
    values = {i.name: numpy_helper.to_array(i) for i in model.graph.initializer}
    values.update(feeds)
    for node in model.graph.node:
        outs = run_node(node, [values[n] if n else None for n in node.input])
        values.update(zip(node.output, outs))
    if wanted is None:
        return values
    return [values[n] for n in wanted]
