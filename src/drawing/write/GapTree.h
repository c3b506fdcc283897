#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <vector>

namespace zv::dwg {

/// The gaps between a file's pages as a tree by their sizes. Gaps have negative numbers; gaps of one size
/// hang behind one another.
class GapTree {
public:
    void add(std::int32_t number, std::uint32_t size)
    {
        m_bySize[size].push_back(number);
        Node& node = m_nodes[number];
        node.size = size;
        if (m_nodes.size() == 1) {
            m_root = number;
            return;
        }
        std::int32_t at = m_root;
        for (;;) {
            Node& here = m_nodes[at];
            if (here.size == size) {
                while (m_nodes[at].next != 0)
                    at = m_nodes[at].next;
                m_nodes[at].next = number;
                break;
            }
            std::int32_t& side = size < here.size ? here.left : here.right;
            if (side == 0) {
                side = number;
                break;
            }
            at = side;
        }
        m_nodes[number].parent = at;
    }
    /// Of a gap: parent, left, right, and the next one of its size; 0 where there is none.
    std::array<std::int32_t, 4> fields(std::int32_t number) const
    {
        const Node& node = m_nodes.at(number);
        return {node.parent, node.left, node.right, node.next};
    }
    std::size_t count() const { return m_nodes.size(); }
    std::int32_t root() const { return m_root; }
    std::int32_t largest() const { return m_bySize.empty() ? 0 : m_bySize.rbegin()->second.front(); }
    std::int32_t smallest() const { return m_bySize.empty() ? 0 : m_bySize.begin()->second.front(); }

private:
    struct Node {
        std::uint32_t size = 0;
        std::int32_t parent = 0, left = 0, right = 0, next = 0;
    };
    std::map<std::int32_t, Node> m_nodes;
    std::map<std::uint32_t, std::vector<std::int32_t>> m_bySize;
    std::int32_t m_root = 0;
};

} // namespace zv::dwg
