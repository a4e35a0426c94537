"""rewrite_graph.py det|rec IN OUT: rewrites a PP-OCRv4 graph once, at install, into the
form that OpenCV 4.6's ONNX importer runs at every input size.

- Constant nodes become initializers; Clip bounds become attributes.
- BatchNormalization and bias Add after a Conv or ConvTranspose are folded into its
  weights (OpenCV would fold them again at each new input size).
- PP-LCNet's activation, x * clip(x + 3, 0, 6) / 6 in four nodes, becomes one HardSwish,
  and the scalar scales and shifts around the convolutions (the learnable affine
  blocks) go into their weights: a third fewer layers to run, same outputs.
- Shape chains feeding Reshape are evaluated; the dimension that follows the input
  width becomes -1. The recogniser then takes one line at a time (batch 1), declared
  at one width.
- ReduceMean over the last axis becomes a MatMul with a column of 1/n, a product with a
  channel vector on [1, T, C] a MatMul with its diagonal; Squeeze becomes Reshape."""

import sys

import numpy as np
import onnx
from onnx import helper, numpy_helper

import numpy_graph

REC_HEIGHT = 48
# Widths at which the recogniser's shape chains are evaluated; they must differ in T.
REC_PROBE_WIDTHS = (320, 480)


class Graph:
    def __init__(self, model):
        self.model = model
        self.g = model.graph
        self.inits = {i.name: numpy_helper.to_array(i) for i in self.g.initializer}

    def set_init(self, name, array):
        self.inits[name] = np.ascontiguousarray(array)

    def consumers(self, name):
        return [n for n in self.g.node if name in n.input]

    def sole_consumer(self, name):
        """The one node reading `name`, None when it is read elsewhere too."""
        users = self.consumers(name)
        if len(users) != 1 or any(name == o.name for o in self.g.output):
            return None
        return users[0]

    def producer(self, name):
        return next((n for n in self.g.node if name in n.output), None)

    def scalar(self, name):
        value = self.inits.get(name)
        return float(value.reshape(-1)[0]) if value is not None and value.size == 1 else None

    def affine(self, node):
        """(s, t) when `node` computes x * s + t with a scalar constant, else None."""
        if node is None or node.op_type not in ("Add", "Sub", "Mul", "Div") \
                or len(node.input) != 2 or node.input[0] in self.inits:
            return None
        c = self.scalar(node.input[1])
        if c is None or (node.op_type == "Div" and c == 0):
            return None
        return {"Add": (1.0, c), "Sub": (1.0, -c), "Mul": (c, 0.0), "Div": (1.0 / c, 0.0)}[node.op_type]

    def without(self, gone):
        ids = {id(n) for n in gone}
        return [n for n in self.g.node if id(n) not in ids]

    def constants_to_initializers(self):
        kept = []
        for node in self.g.node:
            if node.op_type == "Constant":
                self.set_init(node.output[0], numpy_graph.run_node(node, [])[0])
            else:
                kept.append(node)
        self.replace_nodes(kept)

    def replace_nodes(self, nodes):
        del self.g.node[:]
        self.g.node.extend(nodes)

    def drop_dead(self):
        live = {o.name for o in self.g.output}
        kept = []
        for node in reversed(list(self.g.node)):
            if any(o in live for o in node.output):
                kept.append(node)
                live.update(i for i in node.input if i)
        self.replace_nodes(reversed(kept))
        self.inits = {k: v for k, v in self.inits.items() if k in live}

    def finish(self):
        del self.g.initializer[:]
        self.g.initializer.extend(numpy_helper.from_array(v, k) for k, v in self.inits.items())
        del self.g.value_info[:]
        return self.model


def clip_bounds_as_attributes(graph):
    for node in graph.g.node:
        if node.op_type == "Clip" and len(node.input) > 1:
            bounds = [graph.inits[n] if n else None for n in list(node.input[1:3])]
            names = ("min", "max")
            for name, value in zip(names, bounds):
                if value is not None:
                    node.attribute.append(helper.make_attribute(name, float(value)))
            del node.input[1:]


def constants_second(graph):
    """OpenCV takes the constant operand of Add and Mul only in second place."""
    for node in graph.g.node:
        if node.op_type in ("Add", "Mul") and node.input[0] in graph.inits \
                and node.input[1] not in graph.inits:
            node.input[0], node.input[1] = node.input[1], node.input[0]


def fold_into_convolutions(graph):
    """Folds a following BatchNormalization, channel Add or scalar scale and shift into
    Conv/ConvTranspose."""
    changed = True
    while changed:
        changed = False
        for conv in graph.g.node:
            if conv.op_type not in ("Conv", "ConvTranspose"):
                continue
            users = graph.consumers(conv.output[0])
            if len(users) != 1 or any(conv.output[0] == o.name for o in graph.g.output):
                continue
            user = users[0]
            w = graph.inits[conv.input[1]]
            out_axis = 1 if conv.op_type == "ConvTranspose" else 0
            channels = w.shape[out_axis]
            b = graph.inits[conv.input[2]] if len(conv.input) > 2 else np.zeros(channels, np.float32)
            if graph.affine(user) is not None:
                scale, shift = graph.affine(user)
                w = w * scale
                b = b * scale + shift
            elif user.op_type == "BatchNormalization":
                scale, shift, mean, var = (graph.inits[n] for n in user.input[1:5])
                eps = next((a.f for a in user.attribute if a.name == "epsilon"), 1e-5)
                k = scale / np.sqrt(var + eps)
                shape = [1] * w.ndim
                shape[out_axis] = -1
                w = w * k.reshape(shape)
                b = (b - mean) * k + shift
            elif user.op_type == "Add" and user.input[1] in graph.inits \
                    and graph.inits[user.input[1]].size == channels:
                b = b + graph.inits[user.input[1]].reshape(-1)
            else:
                continue
            graph.set_init(conv.input[1] + ".folded", w.astype(np.float32))
            graph.set_init(conv.output[0] + ".bias", b.astype(np.float32))
            conv.input[1] = conv.input[1] + ".folded"
            if len(conv.input) > 2:
                conv.input[2] = conv.output[0] + ".bias"
            else:
                conv.input.append(conv.output[0] + ".bias")
            conv.output[0] = user.output[0]
            graph.replace_nodes([n for n in graph.g.node if n is not user])
            changed = True
            break


def hard_swish(graph):
    """x * clip(x + 3, 0, 6) / 6 as one HardSwish node, which OpenCV runs in one pass and
    fuses into the convolution before it."""
    for add in list(graph.g.node):
        if add.op_type != "Add" or add.input[0] in graph.inits \
                or graph.scalar(add.input[1]) != 3.0:
            continue
        x = add.input[0]
        clip = graph.sole_consumer(add.output[0])
        if clip is None or clip.op_type != "Clip" or len(clip.input) != 1 \
                or {a.name: a.f for a in clip.attribute} != {"min": 0.0, "max": 6.0}:
            continue
        mul = graph.sole_consumer(clip.output[0])
        if mul is None or mul.op_type != "Mul" or sorted(mul.input) != sorted([x, clip.output[0]]):
            continue
        div = graph.sole_consumer(mul.output[0])
        if div is None or div.op_type != "Div" or graph.scalar(div.input[1]) != 6.0:
            continue
        nodes = graph.without([clip, mul, div])
        nodes[nodes.index(add)] = helper.make_node("HardSwish", [x], list(div.output), div.name)
        graph.replace_nodes(nodes)


def fold_scalars_into_following_convolutions(graph):
    """A chain of scalar scales and shifts read only by a Conv goes into its weights:
    conv(W, s*x + t) = conv(W*s, x) + t*sum(W). With zero padding the border would see t
    where it saw 0, so a padded Conv keeps the shift, as one Add of t/s before it."""
    changed = True
    while changed:
        changed = False
        for conv in graph.g.node:
            if conv.op_type != "Conv" or len(conv.input) < 3:
                continue
            chain, reader = [], conv
            while True:
                node = graph.producer(reader.input[0])
                if graph.affine(node) is None or graph.sole_consumer(node.output[0]) is not reader:
                    break
                chain.insert(0, node)
                reader = node
            scale, shift = 1.0, 0.0
            for node in chain:
                s, t = graph.affine(node)
                scale, shift = s * scale, s * shift + t
            padded = shift != 0 and any(
                next((list(a.ints) for a in conv.attribute if a.name == "pads"), []))
            # A lone shift before a padded Conv is already as small as it gets.
            if not chain or scale == 0 or (padded and len(chain) == 1):
                continue
            w = graph.inits[conv.input[1]]
            b = graph.inits[conv.input[2]]
            if not padded:
                b = b + shift * w.reshape(w.shape[0], -1).sum(axis=1)
            graph.set_init(conv.input[1] + ".scaled", (w * scale).astype(np.float32))
            graph.set_init(conv.input[2] + ".shifted", b.astype(np.float32))
            conv.input[1] += ".scaled"
            conv.input[2] += ".shifted"
            nodes = graph.without(chain)
            if padded:
                name = conv.input[0] + ".shift"
                graph.set_init(name, np.array([shift / scale], np.float32))
                nodes.insert(nodes.index(conv),
                             helper.make_node("Add", [chain[0].input[0], name], [conv.input[0]], name))
            else:
                conv.input[0] = chain[0].input[0]
            graph.replace_nodes(nodes)
            changed = True
            break


def probe(graph, widths):
    """Values of every tensor of the graph at batch 1, height 48 and each width."""
    model = graph.finish()
    name = model.graph.input[0].name
    rng = np.random.default_rng(0)
    return [numpy_graph.run(model, {name: rng.random((1, 3, REC_HEIGHT, w), np.float32)})
            for w in widths]


def static_shapes(graph):
    """Evaluates the shape chains of the recogniser and makes Squeeze, ReduceMean and
    per-channel constants what OpenCV imports."""
    runs = probe(graph, REC_PROBE_WIDTHS)

    def target(shapes):
        a, b = (np.asarray(s, np.int64) for s in shapes)
        if (a != b).sum() > 1:
            raise RuntimeError("more than one dimension follows the width: %s %s" % (a, b))
        return np.where(a == b, a, -1).astype(np.int64)

    nodes = []
    for node in graph.g.node:
        if node.op_type == "Reshape" and node.input[1] not in graph.inits:
            name = node.output[0] + ".shape"
            graph.set_init(name, target([r[node.output[0]].shape for r in runs]))
            node.input[1] = name
        elif node.op_type == "Squeeze":
            name = node.output[0] + ".shape"
            graph.set_init(name, target([r[node.output[0]].shape for r in runs]))
            node = helper.make_node("Reshape", [node.input[0], name], list(node.output), node.name)
        elif node.op_type == "ReduceMean":
            axes = [a.ints for a in node.attribute if a.name == "axes"][0]
            source = runs[0][node.input[0]]
            if list(axes) != [-1] and list(axes) != [source.ndim - 1]:
                raise RuntimeError("ReduceMean over axes %s" % list(axes))
            name = node.output[0] + ".column"
            n = source.shape[-1]
            graph.set_init(name, np.full((n, 1), 1.0 / n, np.float32))
            node = helper.make_node("MatMul", [node.input[0], name], list(node.output), node.name)
        elif node.op_type == "Mul" and node.input[1] in graph.inits \
                and graph.inits[node.input[1]].ndim == 1 and graph.inits[node.input[1]].size > 1:
            # OpenCV's Mul takes a channel vector on axis 1 only; on [1, T, C] it is a
            # product with the diagonal matrix.
            name = node.input[1] + ".diagonal"
            graph.set_init(name, np.diag(graph.inits[node.input[1]]).astype(np.float32))
            node = helper.make_node("MatMul", [node.input[0], name], list(node.output), node.name)
        nodes.append(node)
    graph.replace_nodes(nodes)


def declare_line_input(graph, width):
    """OpenCV sizes the layer norms' broadcasts from the declared input at import; any
    width runs afterwards."""
    dims = graph.g.input[0].type.tensor_type.shape.dim
    for dim, value in zip(dims, (1, 3, REC_HEIGHT, width)):
        dim.Clear()
        dim.dim_value = value


def rewrite(kind, source, destination):
    graph = Graph(onnx.load(source))
    graph.constants_to_initializers()
    clip_bounds_as_attributes(graph)
    constants_second(graph)
    hard_swish(graph)
    fold_into_convolutions(graph)
    fold_scalars_into_following_convolutions(graph)
    if kind == "rec":
        static_shapes(graph)
        declare_line_input(graph, REC_PROBE_WIDTHS[0])
    graph.drop_dead()
    onnx.save(graph.finish(), destination)


if __name__ == "__main__":
    if len(sys.argv) != 4 or sys.argv[1] not in ("det", "rec"):
        sys.exit("usage: rewrite_graph.py det|rec IN OUT")
    rewrite(*sys.argv[1:])
