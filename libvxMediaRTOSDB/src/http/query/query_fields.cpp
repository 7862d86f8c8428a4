#include "libvxMediaRTOSDB/src/http/query/query_fields.h"

#include <mediacheckd/vxMediaRTOSDB/query_settings.h>

namespace {

struct FieldName {
    std::string_view name;
    uint32_t fields;
};

constexpr FieldName kFieldNames[] = {
    {"n", FIELD_NAME},
    {"mod", FIELD_MODIFIED},
    {"cre", FIELD_CREATED},
    {"s", FIELD_SIZE},
    {"ls", FIELD_LS},
    {"cl", FIELD_CLIP},
    {"avc", FIELD_AVC_PROFILE},
    {"prof", FIELD_PROFILE},
    {"mahs", FIELD_SCORE},
    {"hc", FIELD_HIGHLIGHT_COUNT},
    {"hi", FIELD_HIGHLIGHTS | FIELD_HIGHLIGHT_COUNT | FIELD_SCORE},
    {"g", FIELD_GROUP},
    {"b", FIELD_GROUP},
    {"l", FIELD_GROUP},
    {"t", FIELD_GROUP},
    {"m", FIELD_GROUP},
    {"ghc", FIELD_GROUP},
    {"ghi", FIELD_GROUP},
    {"gumi", FIELD_GUMI},
    {"pgumi", FIELD_PARENT_GUMI},
    {"DNE", FIELD_DOES_NOT_EXIST},
    {"us", FIELD_UPLOAD_STATUS},
    {"eis", FIELD_EIS},
    {"wdr", FIELD_WDR},
    {"pta", FIELD_PTA},
    {"ao", FIELD_AUDIO_OPTION},
    {"raw", FIELD_RAW},
    {"tr", FIELD_TR},
    {"mp", FIELD_MP},
    {"dur", FIELD_DURATION},
    {"hdr", FIELD_HDR},
    {"legacy", kLegacyFields},
};

}  // namespace

uint32_t fieldsOf(std::string_view name) {
    for (const FieldName& known : kFieldNames) {
        if (known.name == name) {
            return known.fields;
        }
    }
    return 0;
}
