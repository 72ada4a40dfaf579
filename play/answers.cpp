#include "play/answers.h"

Answer ok(const std::string& value) {
    return {Answer::Kind::Ok, value, {}, 1};
}

Answer failed(const std::string& reason) {
    return {Answer::Kind::Failed, reason, {}, 1};
}

Answer faultOf(const Words& words) {
    return {Answer::Kind::Error, words.fault, {}, words.faultColumn};
}
