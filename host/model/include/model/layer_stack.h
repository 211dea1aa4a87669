// The order of a composition's layers: position, lookup by position and moves in logarithmic time.
#pragma once

#include <memory>
#include <vector>

namespace host::model {

class Layer;

// A balanced sequence of layers with parent links, so that a layer finds its own index. Does not own the layers.
class LayerStack {
  public:
    struct Node;

    LayerStack();
    ~LayerStack();
    LayerStack(const LayerStack&) = delete;

    int size() const;
    Layer* at(int index) const;                // 0 <= index < size()
    static int index_of(const Node* node);
    Node* insert(int index, Layer* layer);     // 0 <= index <= size(); the node stays valid until erased
    void erase(Node* node);
    void move(Node* node, int final_index);    // 0 <= final_index < size()
    std::vector<Layer*> to_vector() const;     // top to bottom, linear

  private:
    std::unique_ptr<struct LayerStackImpl> impl_;
};

}  // namespace host::model
