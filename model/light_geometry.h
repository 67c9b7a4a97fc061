#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "importers/sceneapi/dev/light_node.h"

namespace qor {

class Material;

/// Anything that has a shape and a surface.
///
/// `define` writes the shape once and gives it an id; every `emit` after that writes a reference to
/// the id. A shape that was never defined is written in full by each `emit`.
class LightGeometry : public LightNode {
public:
    explicit LightGeometry(std::string name);

    bool is_defined() const override;

    /// The size of the shape's arrays in bytes.
    virtual std::size_t data_size() const = 0;

    /// Several shapes can share a material. Only curves can be emitted without one.
    virtual void set_material(std::shared_ptr<Material> material);
    virtual std::shared_ptr<Material> get_material() const;

    virtual void set_name(std::string name);
    virtual std::string get_name() const;

protected:
    /// Turns the shape into a reference to `id`, which the scene gave to its definition.
    void mark_defined(std::int64_t id);
    std::int64_t definition_id() const { return definition_id_; }

private:
    std::string name_;
    std::shared_ptr<Material> material_;
    bool defined_ = false;
    std::int64_t definition_id_ = 0;  // valid only if `defined_`
};

}  // namespace qor
