// Animations to draw.
#pragma once

#include <string>

// A red square, 50 of 100 pixels, that is there for the frames up to `end` of `length`.
inline std::string square_until(int end, int length = 10) {
    return R"({"v":"5.7.0","fr":30,"ip":0,"op":)" + std::to_string(length) +
           R"(,"w":100,"h":100,"ddd":0,"assets":[],"layers":[{"ddd":0,"ind":1,"ty":1,)"
           R"("nm":"red","sr":1,"ks":{"o":{"a":0,"k":100},"r":{"a":0,"k":0},"p":{"a":0,"k":[25,25,0]},)"
           R"("a":{"a":0,"k":[25,25,0]},"s":{"a":0,"k":[100,100,100]}},"ao":0,"sw":50,"sh":50,"sc":"#ff0000","ip":0,"op":)" +
           std::to_string(end) + R"(,"st":0,"bm":0}]})";
}
