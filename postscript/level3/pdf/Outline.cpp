#include "postscript/level3/pdf/Outline.h"

#include <cstdint>
#include <cstdlib>

namespace quillpress::level3 {

// Indices are those of the items plus 1; 0 is the root, and as a neighbour none.
struct Outline::Node {
  std::size_t parent = 0;
  std::size_t previous = 0;
  std::size_t next = 0;
  std::size_t first = 0;
  std::size_t last = 0;
  // Children and, where those are open, theirs.
  std::int64_t shown = 0;
  std::int64_t stillToCome = 0;
};

std::vector<Outline::Node> Outline::nodes() const {
  std::vector<Node> nodes(items_.size() + 1);
  std::size_t parent = 0;
  for (std::size_t index = 1; index < nodes.size(); ++index) {
    while (parent != 0 && nodes[parent].stillToCome == 0) parent = nodes[parent].parent;
    Node& node = nodes[index];
    node.parent = parent;
    node.previous = nodes[parent].last;
    if (node.previous != 0) nodes[node.previous].next = index;
    if (nodes[parent].first == 0) nodes[parent].first = index;
    nodes[parent].last = index;
    --nodes[parent].stillToCome;
    node.stillToCome = std::abs(static_cast<std::int64_t>(items_[index - 1].count));
    if (node.stillToCome != 0) parent = index;
  }
  // Children stand behind their parents.
  for (std::size_t index = nodes.size(); index-- > 1;) {
    const bool isOpen = items_[index - 1].count >= 0;
    nodes[nodes[index].parent].shown += 1 + (isOpen ? nodes[index].shown : 0);
  }
  return nodes;
}

ObjectNumber Outline::write(PdfFile& file) const {
  const std::vector<Node> nodes = this->nodes();
  std::vector<ObjectNumber> numbers;
  for (std::size_t index = 0; index < nodes.size(); ++index) numbers.push_back(file.reserve());
  for (std::size_t index = 0; index < nodes.size(); ++index) {
    const Node& node = nodes[index];
    DictionaryText text;
    if (index == 0) text.name("Type", "Outlines");
    if (index != 0) {
      text.string("Title", items_[index - 1].title).reference("Parent", numbers[node.parent]);
      if (node.previous != 0) text.reference("Prev", numbers[node.previous]);
      if (node.next != 0) text.reference("Next", numbers[node.next]);
    }
    if (node.first != 0) {
      text.reference("First", numbers[node.first]).reference("Last", numbers[node.last]);
      const bool isOpen = index == 0 || items_[index - 1].count > 0;
      text.integer("Count", isOpen ? node.shown : -node.shown);
    }
    std::string object = "<<" + text.entries();
    if (index != 0) object += items_[index - 1].entries;
    file.write(numbers[index], object + ">>");
  }
  return numbers[0];
}

}  // namespace quillpress::level3
