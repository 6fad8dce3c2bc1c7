// SPDX-License-Identifier: Apache-2.0
/// @file
/// Shared knowledge that every plug-in needs, as static functions.
#pragma once

#include <pi/drive_combination.h>
#include <pi/ssd_endurance.h>
#include <pi/types.h>
#include <pi/vocabulary.h>

#include <string>
#include <utility>
#include <vector>

namespace PI {

/// @addtogroup helper
/// @{

class CEvent;
class CObject;
class CProperty;
class CTextTable;
struct _PROPERTY_DESCRIPTION;

/// All plain functions of the library, under one name.
///
/// All functions are stateless and thread-safe, and throw only what the standard library throws if allocation
/// fails, unless they say otherwise. Results of type int are error codes (pi/vocabulary.h).
class PI_API CPluginHelper {
public:
    /// Functions only.
    CPluginHelper() = delete;

    /// @name Properties
    /// @{

    /// Copies a description's fields into a property; m_Attribute5, m_Format and all data stay as they are.
    static void GenerateCProperty(const _PROPERTY_DESCRIPTION& description, CProperty& property);

    /// The first property of an object that has an identifier, or null. It belongs to the object and is valid
    /// until the object's list of properties is changed.
    static CProperty* FindProperty(CObject& object, _PROPERTY_ID id);
    /// The same for a constant object.
    static const CProperty* FindProperty(const CObject& object, _PROPERTY_ID id);

    /// The value of a property in words, the same in every locale: "447.1 GiB", "RAID5", "5 (0 to 10)".
    ///
    /// A choice, and the first list of two, are given by their names as property values, or as numbers where
    /// there is no name. A fraction has one decimal; if m_Attribute2 is one of _UNITS, the fraction is a
    /// capacity in that unit. A text is given as by GetValueString, a yes or no as "yes" or "no", a document
    /// as "(a document)".
    ///
    /// Nothing is traced.
    /// @param unit follows a number, after a blank; a capacity has its own unit
    /// @return "(no value)" for a property without a value or of an unknown type
    static std::string StringifyProperty(const CProperty& property, const std::string& unit = std::string());
    /// @}

    /// @name Help and icons
    /// @{

    /// Page and anchor of a help topic, such as "properties.htm#ADAPTER_ACTIVITY".
    /// @param path out: empty when the topic is unknown
    /// @return SUCCESS, or GENERAL when the topic is unknown
    static int GetHelpPath(int topic, std::string& path);

    /// File name of an icon, such as "adapter_ok_no.gif"; otherwise as GetHelpPath.
    static int GetIconPath(int icon, std::string& fileName);

    /// Icon of a physical drive. State, medium and power are property values.
    ///
    /// The states with icons of their own are OPERATIONAL, UNCONFIGURED_FAILED, FAILED, REBUILDING,
    /// REBUILD_PAUSED, GLOBAL_HOTSPARE, DEDICATED_HOTSPARE, OFFLINE, FAILED_MISSING, COPY_BACK, MIGRATING,
    /// MIGRATION_PAUSED, REBUILD_FAILED and SYSTEM, and with _SMART appended AVAILABLE,
    /// OPERATIONAL, FAILED, REBUILDING, GLOBAL_HOTSPARE, DEDICATED_HOTSPARE, OFFLINE, COPY_BACK, MIGRATING,
    /// REBUILD_FAILED and SYSTEM. Any other number, known or not, gets the icon of AVAILABLE.
    /// @param medium  PropertyValue::SSD, or any other value for a rotating disk
    /// @param aura    highlighted
    /// @param foreign belongs to a foreign configuration
    /// @param power   PropertyValue::STOPPED, or any other value for a running drive
    /// @return an icon for GetIconPath; a plain drive icon if there is no icon for the combination
    static int GetPDStatusIcon(int state, int medium, bool aura, bool foreign, int power);
    /// @}

    /// @name Events
    /// @{

    /// Renders an event as key/value pairs: "EventID", "Host", "Source", "Timestamp", "Datetime", "Severity",
    /// "Placeholders", "Description", "SequenceNumber", in this order.
    ///
    /// The description is the language resource whose number is the event's identifier, with the first %1 to
    /// %6 replaced by the placeholders in turn. If there is none, or looking it up throws, it is "Unknown
    /// Event", and "Placeholders" is left out. If filling it in throws, even std::bad_alloc, the exception is
    /// absorbed: the description is "Unknown Event", and "Placeholders" holds those used so far. The resolved
    /// placeholders of the event are written.
    static std::vector<std::pair<std::string, std::string>> StringifyEventMessage(CEvent& event);

    /// Renders an event like StringifyEventMessage, in the language of a table (pi/text_table.h).
    ///
    /// Descriptions and resources of placeholders are taken from the table, not from the texts of the
    /// process. The event is only read: several threads may render one event at once, each in its own
    /// language.
    ///
    /// @param withoutText how an event without a description is rendered. With NAME_AND_PLACEHOLDERS the
    ///        description is its name (pi/vocabulary.h; "Event 70001" if the number has none), followed by
    ///        all placeholders that are not empty, each as it would replace its marker, or as "resource
    ///        70002" if it is a resource without a text. "Placeholders" lists them too.
    static std::vector<std::pair<std::string, std::string>> StringifyEventMessageWith(
        const CEvent& event, const CTextTable& texts, _WITHOUT_TEXT withoutText = WithoutText::UNKNOWN_EVENT);

    /// The same, with a choice of what "%2" in the value of a placeholder means: with MarkersInValues::TEXT
    /// only the markers of the description are replaced.
    static std::vector<std::pair<std::string, std::string>> StringifyEventMessageWith(
        const CEvent& event, const CTextTable& texts, _WITHOUT_TEXT withoutText, _MARKERS_IN_VALUES markers);
    /// @}

    /// @name Drives: identification
    /// @{

    /// Splits the model text of a SATA drive (ATA IDENTIFY DEVICE, words 27 to 46) into vendor and model.
    ///
    /// @param vendor out: "--" if the text does not say
    /// @param model  out: the bare model name
    /// @return 0 always
    static int SplitSATAModelName(const std::string& modelText, std::string& vendor, std::string& model);

    /// Removes what some vendors add to their serial numbers ("WD-", "JA1000", Seagate's suffix).
    /// @param vendor compared without regard to case
    /// @param serial changed in place if a rule applies
    static void CorrectSerialNumber(const std::string& vendor, const std::string& model, std::string& serial);

    /// Whether a vendor text is that of a hypervisor's virtual disk: "VMware" exactly, or the bytes CEh FAh.
    static bool IsVirtualDisk(std::string& vendor);
    /// @}

    /// @name Drives: rotation speed
    /// @{

    /// Rotation speed of a SATA disk that does not report it, from its names as SplitSATAModelName gives
    /// them.
    ///
    /// @param vendor compared without regard to case
    /// @param rpm    out: rotations per minute; 7200 for every drive that no rule covers
    /// @return 0 always
    /// @throws std::out_of_range, with rpm set to 7200, for Hitachi and HGST models of fewer than three
    /// characters
    static int GetSATARPM(const std::string& vendor, const std::string& model, unsigned long& rpm);

    /// The rounded speed that users are shown, in thousands of rotations per minute: 4.2, 5.4, 7.2, 10, 15 or
    /// 20.
    /// @return 0 always
    static int RoundRPM(unsigned long rpm, float& thousands);
    /// @}

    /// @name Drives: solid-state lifetime
    /// @{

    /// First row of SATASSDEndurance that matches a model, without regard to case.
    /// @return a row owned by the library, or null
    static const _SSD_ENDURANCE* findLifeTimeProp(const std::string& model);

    /// Estimates how long a solid-state drive will serve, within a span of five years (43829 hours).
    ///
    /// The estimate uses the wear in percent if it is known, otherwise the amount written compared with the
    /// rated endurance. CRemainingLifetime (pi/remaining_lifetime.h) says which of them was used.
    /// @param powerOnHours   hours the drive has been powered
    /// @param bytesWritten   bytes; 0 when unknown
    /// @param percentUsed    wear in percent; 0 when unknown, above 100 counts as 100
    /// @param enduranceTB    terabytes that may be written; 0 when unknown
    /// @param remainingHours out: 1 to 43829, or all ones when nothing can be estimated
    /// @return whether an estimate was written
    static bool ComputeRemainingLifeTime(unsigned long powerOnHours, unsigned long bytesWritten,
                                         unsigned int percentUsed, unsigned long enduranceTB,
                                         unsigned long& remainingHours);
    /// @}

    /// @name Drives: combination and units
    /// @{

    /// Whether a drive may join the drives of a container.
    ///
    /// What the permissions and the attribute mean is up to the caller; the rules are fixed. Traces are of
    /// category 21.
    /// @param containerType  any number; 0 is compared like any other
    /// @param containerMedia PropertyValue::HDD, PropertyValue::SSD or another medium; 0 is compared too
    /// @param driveType      0 when unknown: nothing is checked then
    /// @param driveMedia     0 when unknown: nothing is checked then
    /// @return SUCCESS, NO_MIX_OF_DIFFERENT_TYPES_IN_LD or NO_MIX_OF_DIFFERENT_MEDIA_TYPES_IN_LD
    static int ValidatePhysicalDriveCombination(bool permit0, bool permit1, bool permit2, bool permit3,
                                                int containerType, int containerMedia,
                                                bool containerAttribute, int driveType, int driveMedia,
                                                bool driveAttribute);

    /// Every reason for which ValidatePhysicalDriveCombination refuses a drive, in the order in which it
    /// checks them, so that the first has its code; none if it returns SUCCESS. The parameters are the same.
    /// Nothing is traced.
    static std::vector<CDriveMismatch> ExplainPhysicalDriveCombination(bool permit0, bool permit1,
                                                                       bool permit2, bool permit3,
                                                                       int containerType, int containerMedia,
                                                                       bool containerAttribute, int driveType,
                                                                       int driveMedia, bool driveAttribute);

    /// Scales a byte count to the largest binary unit in which it is at least 1.
    ///
    /// @param value out: single precision; above 1024 only in petabytes
    /// @return true always
    static bool ConvertBytesToOtherUnit(unsigned long bytes, float& value, _UNITS& unit);
    /// @}

    /// @name Drives: SCSI sense data
    /// @{

    /// Text and severity of a sense key as SCSI Primary Commands (SPC) numbers it.
    /// @param senseKey its low four bits count
    /// @return SUCCESS always
    static int TranslateSenseKey(unsigned char senseKey, std::string& text, _SEVERITY& severity);

    /// Text of an additional sense code and qualifier, as the T10 committee publishes it, in lower case.
    ///
    /// @param text out: empty for an unknown pair; the codes 40h (from qualifier 80h on), 4Dh and 70h count
    ///             as unknown but still have a text, in which the qualifier is a character, possibly NUL
    /// @return SUCCESS, or GENERAL when the pair is unknown
    static int TranslateSenseASC(unsigned char asc, unsigned char ascq, std::string& text);
    /// @}

    /// @name Texts
    /// @{

    /// Percent-encodes a text, with lower-case digits. Letters, digits, blanks and ()-.:_~ stay; the bytes
    /// 01h, 16h, BEh and EEh are dropped.
    static std::string stringurlencode(const std::string& in);

    /// Removes from a resource text what an XML element name cannot contain: blanks and #()./:<=>.
    /// @param out may be the same string as in
    /// @return 0 always
    static int GenXMLNodeConformantString(const std::string& in, std::string& out);

    /// Whether a text equals that of a language resource, without regard to case as the global locale defines
    /// it.
    /// @param conformant compares with the resource text as GenXMLNodeConformantString gives it
    /// @throws whatever the language support throws
    static bool MatchNLS(const std::string& text, int id, bool conformant);

    /// Whether a password has 8 to 32 bytes and among them an ASCII upper-case letter, lower-case letter,
    /// digit and punctuation character.
    static bool ValidatePasswordStrength(std::string& password);

    /// Writes data[first] to data[end - 1] as upper-case hexadecimal bytes with blanks between them; nothing
    /// when first is not below end.
    /// @param data readable in that range
    /// @return true always
    static bool HexDump(std::string& out, unsigned char* data, unsigned long first, unsigned long end);

    /// Whether an object type is one of the nine adapter types.
    static bool IsAdapterType(PI::_OBJECT_TYPE type);
    /// @}
};

/// @}

}  // namespace PI
