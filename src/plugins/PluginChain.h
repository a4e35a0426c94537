#pragma once
// The name/value chains passed to and returned by action functions, in the C runtime's heap
// as the plug-in interface requires.

#include <QByteArray>
#include <QString>
#include <utility>
#include <vector>

#include "plugins/include/autoscene_plugin.h"

namespace autoscene::plugins {

// A parameter chain owned by the host: built with malloc, freed when it goes.
class ParamChain {
public:
    explicit ParamChain(const std::vector<std::pair<QByteArray, QByteArray>>& nodes);
    ~ParamChain();
    ParamChain(const ParamChain&) = delete;
    ParamChain& operator=(const ParamChain&) = delete;

    const mv_node* first() const { return first_; }

private:
    mv_node* first_ = nullptr;
};

struct ResultNode {
    QString name;
    QString value;
};

struct ResultChain {
    std::vector<ResultNode> nodes;
    int skipped = 0;         // nodes without a name or a value
    bool truncated = false;  // longer than kMaxResultNodes, or circular
};

// Longest chain read; a plug-in that returns more has its tail ignored and leaked.
inline constexpr int kMaxResultNodes = 100000;

// Reads the chain a plug-in returned and frees every node and text of it with free().
// Names are read in the local 8-bit encoding, values as UTF-8. A node missing its name or
// its value is skipped; a chain that comes back to a node stops there.
ResultChain takeResultChain(mv_node* first);

}  // namespace autoscene::plugins
