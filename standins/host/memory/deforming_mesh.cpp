#include "standins/host/memory/deforming_mesh.h"

#include <utility>

namespace memhost {

DeformingMesh& DeformingMesh::moves(Motion motion) {
    return moves(std::move(motion), nullptr);
}

DeformingMesh& DeformingMesh::moves(Motion motion, MotionValidity validity) {
    motion_ = std::move(motion);
    motion_validity_ = std::move(validity);
    return *this;
}

DeformingMesh& DeformingMesh::rests(const Interval& rest) {
    rests_.push_back(rest);
    return *this;
}

std::size_t DeformingMesh::key_at(TimeValue t) const {
    std::size_t key = 0;
    while (key + 1 < keys_.size() && keys_[key + 1].tick <= t) {
        ++key;
    }
    return key;
}

const Interval* DeformingMesh::rest_at(TimeValue t) const {
    for (const Interval& rest : rests_) {
        if (rest.InInterval(t)) {
            return &rest;
        }
    }
    return nullptr;
}

Interval DeformingMesh::validity(TimeValue t) const {
    const std::size_t key = key_at(t);
    Interval valid = FOREVER;
    if (key > 0) {
        valid &= Interval(keys_[key].tick, TIME_PosInfinity);
    }
    if (key + 1 < keys_.size()) {
        valid &= Interval(TIME_NegInfinity, keys_[key + 1].tick - 1);
    }
    if (motion_validity_) {
        valid &= motion_validity_(t);
    } else if (motion_) {
        const Interval* rest = rest_at(t);
        valid &= rest ? *rest : Interval(t, t);
    }
    return valid;
}

const Mesh& DeformingMesh::at_rest(TimeValue t) const {
    return keys_[key_at(t)].mesh;
}

void DeformingMesh::deform(TimeValue t, Mesh& mesh) const {
    if (!motion_) {
        return;
    }
    const Interval* rest = rest_at(t);
    const TimeValue motion_time = !rest                              ? t
                                  : rest->Start() > TIME_NegInfinity ? rest->Start()
                                                                     : rest->End();
    motion_(motion_time, at_rest(t), mesh);
}

}  // namespace memhost
