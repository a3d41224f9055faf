// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/AEDesc.h"

#include <QMetaType>
#include <QString>

#include <memory>

/// An Apple event, or any descriptor, as an object: whoever holds it sees what others put into it.
///
/// The readers convert where they can and answer 0 or a null value where they cannot; the writers leave a
/// descriptor that is no record as it is.
///
/// THREADING: as other objects without a lock.
class DOZELYKIT_EXPORT NSAppleEventDescriptor
{
public:
    /// The null descriptor is the reply to an event that wants none.
    static std::shared_ptr<NSAppleEventDescriptor> nullDescriptor();
    static std::shared_ptr<NSAppleEventDescriptor> descriptorWithAEDesc(const AEDesc &desc);
    static std::shared_ptr<NSAppleEventDescriptor> descriptorWithDescriptorType(DescType type,
                                                                                const QByteArray &data);
    static std::shared_ptr<NSAppleEventDescriptor> descriptorWithInt32(qint32 value);
    /// As Unicode text.
    static std::shared_ptr<NSAppleEventDescriptor> descriptorWithString(const QString &text);

    NSAppleEventDescriptor(const NSAppleEventDescriptor &) = delete;
    NSAppleEventDescriptor &operator=(const NSAppleEventDescriptor &) = delete;

    /// The value that the object stands for.
    const AEDesc &aeDesc() const { return m_desc; }
    DescType descriptorType() const { return m_desc.descriptorType(); }

    AEEventClass eventClass() const; ///< 0 for what is no event; so eventID.
    AEEventID eventID() const;

    /// A copy of the parameter; null when there is none. So the attribute.
    std::shared_ptr<NSAppleEventDescriptor> paramDescriptorForKeyword(AEKeyword keyword) const;
    std::shared_ptr<NSAppleEventDescriptor> attributeDescriptorForKeyword(AEKeyword keyword) const;

    /// A null `value` removes the parameter.
    void setParamDescriptorForKeyword(const std::shared_ptr<NSAppleEventDescriptor> &value,
                                      AEKeyword keyword);

    qint32 int32Value() const;
    QString stringValue() const;
    QByteArray data() const; ///< The bytes as they are; null for a container.

private:
    explicit NSAppleEventDescriptor(const AEDesc &desc);
    OSType code(AEKeyword attribute) const;

    AEDesc m_desc;
};

Q_DECLARE_METATYPE(std::shared_ptr<NSAppleEventDescriptor>)
