// An XML node that the classes pass around: immutable, detached from its document, and valid as
// long as it is retained. Any thread.
#import <Foundation/Foundation.h>

#include "Core/xml.h"

@interface XMLElement : NSObject {
  vireonix::core::xml::Tree node_;
}

/// The root element of a file: parsed strictly, else leniently, else nil.
+ (XMLElement *)rootElementOfFile:(NSString *)path;

/// The one element that a string holds, parsed strictly; nil when it is not well-formed.
+ (XMLElement *)elementWithXMLString:(NSString *)text;

/// Wraps a node; nil for none. A pointer into a larger tree keeps that tree alive.
+ (XMLElement *)elementWithNode:(vireonix::core::xml::Tree)node;

/// The node with its tree.
- (vireonix::core::xml::Tree)tree;
/// The node, valid as long as the receiver.
- (const vireonix::core::xml::Node *)node;

/// An element's qualified name, a processing instruction's target, nil for any other node.
- (NSString *)name;
/// The characters of the node; for an element, of all text and CDATA sections below it.
- (NSString *)stringValue;
/// The values by name; use `attributeNames` for the order.
- (NSDictionary *)attributes;
/// The names of the attributes, in document order.
- (NSArray *)attributeNames;
/// The value of an attribute, or nil.
- (NSString *)attributeForName:(NSString *)name;
/// All child nodes of every kind, in document order.
- (NSArray *)children;
/// The child elements of that name, in document order.
- (NSArray *)elementsForName:(NSString *)name;
/// The markup of the node with everything below it.
- (NSString *)XMLString;

@end
