#import "Class/XMLElement.h"

#import "Bridge/text.h"

namespace xml = vireonix::core::xml;
using vireonix::bridge::path;
using vireonix::bridge::string;
using vireonix::bridge::utf8;

@implementation XMLElement

+ (XMLElement *)rootElementOfFile:(NSString *)file {
  return [self elementWithNode:xml::parseFile(path(file))];
}

+ (XMLElement *)elementWithXMLString:(NSString *)text {
  return [self elementWithNode:xml::parse(utf8(text), xml::Mode::Strict)];
}

+ (XMLElement *)elementWithNode:(xml::Tree)node {
  if (!node)
    return nil;
  XMLElement *made = [[[self alloc] init] autorelease];
  made->node_ = std::move(node);
  return made;
}

- (xml::Tree)tree {
  return node_;
}

- (const xml::Node *)node {
  return node_.get();
}

- (NSString *)name {
  switch (node_->kind) {
  case xml::NodeKind::Element:
    return string(node_->content);
  case xml::NodeKind::ProcessingInstruction:
    return string(node_->content.substr(0, node_->content.find(' ')));
  default:
    return nil;
  }
}

- (NSString *)stringValue {
  return string(node_->stringValue());
}

- (NSDictionary *)attributes {
  NSMutableDictionary *values = [NSMutableDictionary dictionary];
  for (const xml::Attribute &each : node_->attributes)
    [values setObject:string(each.value) forKey:string(each.name)];
  return values;
}

- (NSArray *)attributeNames {
  NSMutableArray *names = [NSMutableArray array];
  for (const xml::Attribute &each : node_->attributes)
    [names addObject:string(each.name)];
  return names;
}

- (NSString *)attributeForName:(NSString *)name {
  const std::string_view *value = node_->attribute(utf8(name));
  return value != nullptr ? string(*value) : nil;
}

// A child shares the tree that it stands in.
- (XMLElement *)elementWithChild:(const xml::Node &)child {
  return [XMLElement elementWithNode:xml::Tree(node_, &child)];
}

- (NSArray *)children {
  NSMutableArray *found = [NSMutableArray array];
  for (const xml::Node &child : node_->children)
    [found addObject:[self elementWithChild:child]];
  return found;
}

- (NSArray *)elementsForName:(NSString *)name {
  const std::string wanted = utf8(name);
  NSMutableArray *found = [NSMutableArray array];
  for (const xml::Node &child : node_->children) {
    if (child.isElement(wanted))
      [found addObject:[self elementWithChild:child]];
  }
  return found;
}

- (NSString *)XMLString {
  return string(xml::write(*node_));
}

@end
