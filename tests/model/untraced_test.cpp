// SPDX-License-Identifier: Apache-2.0
// What writes no trace. Only getters do; a setter's value may be a secret, and documents are read in passing.

#include <gtest/gtest.h>
#include <pi/layout.h>
#include <pi/object.h>
#include <pi/plugin_helper.h>

#include <string>
#include <utility>
#include <vector>

#include "model/property_samples.h"
#include "support/all_traces.h"

namespace PI::Test {
namespace {

std::vector<CProperty> PropertiesOfEveryType() {
    std::vector<CProperty> properties;
    for (const _PROPERTY_TYPE type : DATA_TYPES) {
        properties.push_back(FilledProperty(type));
    }
    for (const _PROPERTY_TYPE type : OTHER_TYPES) {
        properties.push_back(FilledProperty(type));
    }
    return properties;
}

TEST(Untraced, SettersWhateverTheTypeWas) {
    for (const CProperty& sample : PropertiesOfEveryType()) {
        for (const std::int32_t format : {0, 4}) {  // plain and encoded texts
            CProperty property(sample);
            property.m_Format = format;
            ExpectNoTrace([&property] {
                property.SetValue("a secret");
                property.SetValue(std::string("ENC1(a secret)"));
                property.SetValue(5, std::vector<int>{4, 5});
                property.SetValue(5, std::vector<int>());  // refused
                property.SetValue(11, 0, 10, 3U);
                property.SetValue(true);
                property.SetValue(5UL);
                property.SetValue(-5L);
                property.SetValue(2.5F);
                std::vector<int> values{1, 2};
                property.SetValue(values, values);
                std::vector<unsigned long> longs{1, 2};
                property.SetValue(longs);
                property.SetValue(std::vector<std::string>{"a secret"}, 1U);
                VELK::XML::xml_document document;
                document.load_string("<A secret='1'/>");
                property.SetValue(document);
            });
        }
    }
}

TEST(Untraced, CopiesMovesAndComparisonsOfProperties) {
    const std::vector<CProperty> properties = PropertiesOfEveryType();
    for (const CProperty& left : properties) {
        for (const CProperty& right : properties) {
            ExpectNoTrace([&] {
                CProperty copy(left);
                EXPECT_EQ(copy == right, right == copy);
                copy = right;
                CProperty moved(std::move(copy));
                copy = std::move(moved);
            });
        }
    }
}

TEST(Untraced, GenerateCProperty) {
    for (CProperty property : PropertiesOfEveryType()) {
        ExpectNoTrace([&property] {
            CPluginHelper::GenerateCProperty(
                {PropertyID::STATUS, 1, 2, 3, 4, property.m_Type, 5, true, false}, property);
        });
    }
}

TEST(Untraced, CopiesAndComparisonsOfRecords) {
    ExpectNoTrace([] {
        CDrive drive;
        drive.m_Properties = PropertiesOfEveryType();
        CContainer container;
        container.m_Drives = {drive, CDrive()};
        CLogicalDrive logicalDrive;
        logicalDrive.m_Properties = drive.m_Properties;
        logicalDrive.m_Containers = {container};
        CArray array;
        array.m_Containers = {container};
        CObject object(1, static_cast<_OBJECT_TYPE>(2));
        object.m_Properties = drive.m_Properties;
        EXPECT_FALSE(CDrive(drive) < drive);
        EXPECT_TRUE(CContainer(container) == container);
        EXPECT_FALSE(CLogicalDrive() == logicalDrive);
        EXPECT_FALSE(CArray() == array);
        EXPECT_TRUE(CObject(object).m_Properties.size() == object.m_Properties.size());
        EXPECT_FALSE(object == CObject());
        EXPECT_TRUE(CLevel() == CLevel() && CPartition() == CPartition() && CMigration() == CMigration());
    });
}

TEST(Untraced, LayoutsReadFromDocumentsOfAnyKind) {
    for (const char* text :
         {"", "<Other/>", "not XML",
          "<ArrayConfiguration Size='5' Units='21025'><Containers><Container><Drive "
          "ObjectID='1'/></Container>"
          "</Containers><LogicalDrives><LogicalDrive ObjectID='2'/></LogicalDrives></ArrayConfiguration>",
          "<ArrayConfiguration Size='5x' Units=''><Containers><Container><Odd ObjectID='-'/></Container>"
          "<Other/></Containers><LogicalDrives><LogicalDrive/></LogicalDrives></ArrayConfiguration>",
          "<LogicalDriveConfiguration Size='5' Units='21025' SpanCount='1' "
          "SpanSize='2'><Containers><Container>"
          "<Drive ObjectID='1'/></Container></Containers><GlobalHotSpares><Drive ObjectID='3'/>"
          "</GlobalHotSpares></LogicalDriveConfiguration>",
          "<LogicalDriveConfiguration Size='?' SpanCount='99999999999999999999'><Containers><Container>"
          "<Odd IsConfigurable='2'/></Container></Containers><DedicatedHotSpares><Drive ObjectID='x'/>"
          "</DedicatedHotSpares></LogicalDriveConfiguration>"}) {
        VELK::XML::xml_document document;
        document.load_string(text);
        ExpectNoTrace([&document] {
            const CArray array(document);
            const CLogicalDrive logicalDrive(document);
        });
    }
}

}  // namespace
}  // namespace PI::Test
