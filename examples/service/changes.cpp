// SPDX-License-Identifier: Apache-2.0

#include "changes.h"

#include <pi/exchange/model_json.h>

#include <algorithm>
#include <map>

#include "inventory.h"
#include "printable_text.h"

namespace service {
namespace {

using Objects = std::vector<PI::CObject>;

/// Calls for what is new or still there, with what it was before or null, then for what is gone. Objects that
/// share an identifier are told apart by their order.
template <class Now, class Gone>
void Compare(const Objects& before, const Objects& now, Now isNow, Gone isGone) {
    std::multimap<std::uint64_t, const PI::CObject*> old;
    for (const PI::CObject& object : before) {
        old.emplace(object.m_ObjectID, &object);
    }
    for (const PI::CObject& object : now) {
        const auto found = old.lower_bound(object.m_ObjectID);
        const bool isNew = found == old.end() || found->first != object.m_ObjectID;
        isNow(object, isNew ? nullptr : found->second);
        if (!isNew) {
            old.erase(found);
        }
    }
    for (const auto& [id, object] : old) {
        isGone(*object);
    }
}

/// What is known about an object, by what it is.
std::map<std::string, std::string> Facts(const PI::CObject& object) {
    std::map<std::string, std::string> facts;
    const auto add = [&facts](const std::string& key, const std::string& value) {
        std::string& fact = facts[key];
        fact += (fact.empty() ? "" : ", ") + value;
    };
    for (const PI::CProperty& property : object.m_Properties) {
        add(PI::PropertyIDToString(property.m_ID), PI::CPluginHelper::StringifyProperty(property));
    }
    for (const PI::COperation& operation : object.m_Operations) {
        add("can", PI::OperationIDToString(static_cast<int>(operation.m_Header1)));
    }
    return facts;
}

std::string Line(const std::string& text) {
    return PrintableText(text) + "\n";
}

/// The lines of what differs.
std::string FactChanges(const PI::CObject& before, const PI::CObject& now) {
    auto oldFacts = Facts(before);
    auto newFacts = Facts(now);
    for (const auto& [key, value] : newFacts) {
        oldFacts.emplace(key, "(none)");
    }
    std::string text;
    for (const auto& [key, value] : oldFacts) {
        const std::string& newValue = newFacts.emplace(key, "(none)").first->second;
        if (value != newValue) {
            text += Line("    " + key + ": " + value + " -> " + newValue);
        }
    }
    return text;
}

/// A name as JSON; PrintableText leaves only these two to be escaped.
std::string Quoted(const std::string& name) {
    std::string text = "\"";
    for (const char character : PrintableText(name)) {
        if (character == '"' || character == '\\') {
            text += '\\';
        }
        text += character;
    }
    return text + "\"";
}

std::string JsonLine(const std::string& plugin, const char* key, const std::string& value) {
    return "{\"plugin\":" + Quoted(plugin) + ",\"" + key + "\":" + value + "}\n";
}

}  // namespace

std::string ChangesText(const Objects& before, const Objects& now) {
    std::string text;
    Compare(
        before, now,
        [&](const PI::CObject& object, const PI::CObject* old) {
            const std::string changes = FactChanges(old == nullptr ? PI::CObject() : *old, object);
            if (old == nullptr || !changes.empty()) {
                text += Line("  " + ObjectHeading(object) + (old == nullptr ? " is new" : "")) + changes;
            }
        },
        [&](const PI::CObject& object) { text += Line("  " + ObjectHeading(object) + " is gone"); });
    return text;
}

std::string ChangesJson(const std::string& plugin, const Objects& before, const Objects& now) {
    std::string text;
    Compare(
        before, now,
        [&](PI::CObject object, const PI::CObject* old) {
            const std::string json = PI::ToJson(object);
            object.m_UniqueID = old == nullptr ? 0 : old->m_UniqueID;  // new in each report
            if (old == nullptr || PI::ToJson(object) != PI::ToJson(*old)) {
                text += JsonLine(plugin, "object", json);
            }
        },
        [&](const PI::CObject& object) {
            text += JsonLine(plugin, "gone", std::to_string(object.m_ObjectID));
        });
    return text;
}

std::string EventsJson(const std::string& plugin, const std::vector<PI::CEvent>& events) {
    std::string text;
    for (const PI::CEvent& event : events) {
        text += JsonLine(plugin, "event", PI::ToJson(event));
    }
    return text;
}

std::set<std::uint64_t> RepeatedIDs(const Objects& objects) {
    std::set<std::uint64_t> seen;
    std::set<std::uint64_t> repeated;
    for (const PI::CObject& object : objects) {
        if (!seen.insert(object.m_ObjectID).second) {
            repeated.insert(object.m_ObjectID);
        }
    }
    return repeated;
}

void KeepMissing(const Objects& before, Objects& now) {
    Objects missing;
    Compare(
        before, now, [](const PI::CObject&, const PI::CObject*) {},
        [&](const PI::CObject& object) { missing.push_back(object); });
    now.insert(now.end(), missing.begin(), missing.end());
}

}  // namespace service
