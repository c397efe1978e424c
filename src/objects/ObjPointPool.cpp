// The point pool of OBJ8 geometry: flat float storage plus an exact-match index
// of whole points, used to share identical vertices when geometry is built.
#include "objects/ObjModel.h"

void ObjPointPool::clear(int newDepth) {
    data.clear();
    index.clear();
    depth = newDepth;
}

void ObjPointPool::resize(int points) {
    if (points < 0) points = 0;
    data.resize(static_cast<size_t>(points) * depth, 0.0f);
    index.clear();
}

int ObjPointPool::count() const {
    return depth > 0 ? static_cast<int>(data.size() / depth) : 0;
}

void ObjPointPool::set(int n, const float* p) {
    float* dst = get(n);
    for (int i = 0; i < depth; ++i)
        dst[i] = p[i];
    // emplace keeps an existing entry: the older position wins.
    index.emplace(std::vector<float>(p, p + depth), n);
}

int ObjPointPool::append(const float* p) {
    const int n = count();
    data.insert(data.end(), p, p + depth);
    index.emplace(std::vector<float>(p, p + depth), n);
    return n;
}

int ObjPointPool::accumulate(const float* p) {
    auto found = index.find(std::vector<float>(p, p + depth));
    if (found != index.end()) return found->second;
    return append(p);
}

// Copies up to `n` floats into a point of the pool's own depth (zero-padded), so
// a pool of an unexpected depth is never read past the source.
static int AppendPadded(ObjPointPool* pool, const float* src, int n) {
    std::vector<float> point(pool->depth > 0 ? pool->depth : 0, 0.0f);
    for (int i = 0; i < n && i < pool->depth; ++i)
        point[i] = src[i];
    return pool->append(point.data());
}

int append_rgb(ObjPointPool* pool, const vec_rgb& v) {
    const float p[6] = {v.v[0], v.v[1], v.v[2], v.rgb[0], v.rgb[1], v.rgb[2]};
    return AppendPadded(pool, p, 6);
}

int append_st(ObjPointPool* pool, const vec_tex& v) {
    const float p[8] = {v.v[0], v.v[1], v.v[2], 0.0f, 0.0f, 0.0f, v.st[0], v.st[1]};
    return AppendPadded(pool, p, 8);
}
