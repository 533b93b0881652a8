// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_COMMANDS_ERDINFOVALUES_H
#define VN_TOOL_COMMANDS_ERDINFOVALUES_H

#include "erdinfo/ErdinfoFields.h"

#include <vector>

namespace vn::tool {

/** The values of a record in the order in which the commands take and show them: numbers, times,
 * texts. */
inline std::vector<const ErdinfoField *> erdinfoValues()
{
    using Type = ErdinfoField::Type;
    std::vector<const ErdinfoField *> values;
    for (const Type type : {Type::I32, Type::U32, Type::Time, Type::Text})
        for (const ErdinfoField &field : kErdinfoFields)
            if (field.type == type && field.role == ErdinfoField::Role::Value)
                values.push_back(&field);
    return values;
}

} // namespace vn::tool

#endif // VN_TOOL_COMMANDS_ERDINFOVALUES_H
