#include "plugins/PluginChain.h"

#include <cstdlib>
#include <cstring>
#include <unordered_set>

namespace autoscene::plugins {

namespace {

char* mallocCopy(const QByteArray& text) {
    auto* copy = static_cast<char*>(std::malloc(size_t(text.size()) + 1));
    if (copy) {
        std::memcpy(copy, text.constData(), size_t(text.size()));
        copy[text.size()] = '\0';
    }
    return copy;
}

void freeNode(mv_node* node) {
    std::free(node->name);
    std::free(node->value);
    std::free(node);
}

}  // namespace

ParamChain::ParamChain(const std::vector<std::pair<QByteArray, QByteArray>>& nodes) {
    mv_node** link = &first_;
    for (const auto& [name, value] : nodes) {
        auto* node = static_cast<mv_node*>(std::calloc(1, sizeof(mv_node)));
        if (!node) {
            return;
        }
        node->name = mallocCopy(name);
        node->value = mallocCopy(value);
        *link = node;
        link = &node->next;
    }
}

ParamChain::~ParamChain() {
    for (mv_node* node = first_; node;) {
        mv_node* next = node->next;
        freeNode(node);
        node = next;
    }
}

ResultChain takeResultChain(mv_node* first) {
    ResultChain chain;
    std::unordered_set<const mv_node*> seen;
    for (mv_node* node = first; node;) {
        if (int(seen.size()) == kMaxResultNodes || !seen.insert(node).second) {
            chain.truncated = true;
            break;
        }
        if (node->name && node->value) {
            chain.nodes.push_back(
                {QString::fromLocal8Bit(node->name), QString::fromUtf8(node->value)});
        } else {
            ++chain.skipped;
        }
        mv_node* next = node->next;
        freeNode(node);
        node = next;
    }
    return chain;
}

}  // namespace autoscene::plugins
