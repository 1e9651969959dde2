#ifndef EMBEDDED_SESSION_H
#define EMBEDDED_SESSION_H

#include "ExportedByCatia.h"
#include "embedded/Environment.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

class CATDocument;
class CATIProduct;

namespace embedded {

class DocumentObject;
class ProductObject;
class Product;
struct SessionData;

/** A document of the session. A light name for it: copies mean the same document, no reference is held. Calls on a
 * name of nothing do nothing and answer nothing. */
class ExportedByCatia Document {
public:
    explicit Document(DocumentObject* object = nullptr) : m_object(object) {}
    explicit operator bool() const { return m_object != nullptr; }
    /** The platform's pointer. No reference is added. */
    CATDocument* get() const;
    DocumentObject* object() const { return m_object; }

    std::string name() const;
    /** Text of the identifier in the descriptor: four hexadecimal fields joined by "_". */
    Document& uuid(const std::string& text);
    std::string uuid() const;
    /** Without a descriptor, nobody learns the identifier. */
    Document& withoutDescriptor();
    /** Whether there is nothing to save (true at first). */
    Document& saved(bool value);
    bool saved() const;
    /** Whether the document has a file of its own (true at first when its name has a directory). */
    Document& onDisk(bool value);
    bool onDisk() const;
    /** Type text; at first the suffix of the name. */
    Document& type(const std::string& text);
    std::string type() const;
    /** Whether the root needs no update (true at first). */
    Document& upToDate(bool value);
    bool upToDate() const;
    /** A document without automation interface / that gives no roots when asked for them. */
    Document& withoutAutomation();
    Document& withoutRoots();
    /** Whether the platform has the document loaded: the document of a product always, any other not while every place
     * of it in the open structures is in visualisation and neither a window nor a lock keeps it. The session knows it
     * all the same; pointers to it and to what is in it are good for being released only, even once it is loaded
     * again. */
    bool loaded() const;
    /** The document's root product. Parts, products, shapes and neutral geometry have one; none for every other type,
     * such as a drawing. */
    Product root() const;

private:
    DocumentObject* m_object;
};

/**
 * A product: a reference, an instance directly below a reference, or an occurrence further down. A light name for it.
 * Calls on a name of nothing do nothing and answer nothing.
 */
class ExportedByCatia Product {
public:
    explicit Product(ProductObject* object = nullptr) : m_object(object) {}
    explicit operator bool() const { return m_object != nullptr; }
    friend bool operator==(const Product& a, const Product& b) { return a.m_object == b.m_object; }
    /** The platform's pointer, borrowed: no reference is added, and from now on it may be used without one. Every other
     * pointer, those to the same object's other interfaces included, only while somebody holds a reference on it. */
    CATIProduct* get() const;
    ProductObject* object() const { return m_object; }

    /** Adds an instance of a document's root product to the reference that this product shows; the new instance in this
     * product's context. None when there is no root product, when a brother has that name, or when a product would come
     * to contain itself. */
    Product add(const Document& child, const std::string& instanceName) const;
    /** Adds an instance of the reference that a product shows, such as that of a component that exists already. None
     * also for a component of another document. */
    Product add(const Product& reference, const std::string& instanceName) const;
    /** Adds a component: its reference lives in this reference's document. The new instance. */
    Product addComponent(const std::string& partNumber, const std::string& instanceName) const;
    /** Adds an instance whose reference is not loaded (a broken link). */
    Product addUnresolved(const std::string& instanceName) const;

    /** The reference that this product shows; none for an unresolved instance. */
    Product reference() const;
    /** The product one level up in this product's context; none at the root. */
    Product father() const;
    /** Direct children in this product's context. */
    std::vector<Product> children() const;
    /** The occurrence below this product along instance names. */
    Product at(const std::vector<std::string>& instanceNames) const;

    Product& partNumber(const std::string& text);
    std::string partNumber() const;
    /** A name that a brother has is refused, as is any name for a reference. */
    Product& instanceName(const std::string& text);
    std::string instanceName() const;
    /** The instance description. An occurrence further down shows that of its instance until it is given its own. */
    Product& description(const std::string& text);
    std::string description() const;
    Product& referenceDescription(const std::string& text);
    std::string referenceDescription() const;
    /** Path of the file that shows the product, kept with the reference; empty: no master shape representation. */
    Product& masterShape(const std::string& path);
    /** A named shape representation of the reference; the first one added is the default. */
    Product& shape(const std::string& name, const std::string& path);
    /** A product that does not answer its properties / whose reference does not answer its document. */
    Product& withoutProperties();
    Product& withoutLinkableObject();

private:
    ProductObject* m_object;
};

/**
 * The one session of the process: documents, product structure and environment. Reads like the assembly it makes:
 *
 *     auto& session = Session::current();
 *     auto root = session.product("/w/Root.CATProduct").root();
 *     auto bolt = root.add(session.part("/w/Bolt.CATPart"), "Bolt.1");
 */
class ExportedByCatia Session {
public:
    static Session& current();

    /** Back to an empty session with the default environment: no document, no journal line, no report. */
    void reset();

    Environment& environment();

    /** A document of any kind; its type is the suffix of the name, its identifier new. The root product of a document
     * has its file name without suffix as part number. A name that is known already means the known document. */
    Document document(const std::string& storageName);
    Document part(const std::string& storageName) { return document(storageName); }
    Document product(const std::string& storageName) { return document(storageName); }
    /** A document by its storage name, letter case ignored, loaded or not; none when absent. */
    Document find(const std::string& storageName) const;
    std::size_t documentCount() const;
    Document documentAt(std::size_t index) const;

    /** Documents whose drawing sheets were updated, by storage name, with "+details" when detail sheets are kept. */
    std::vector<std::string>& updatedDrawings();

    /** Text that tells every stored state apart (descriptions, names, flags): equal texts mean nothing changed. */
    std::string digest() const;

    SessionData& data() { return *m_data; }

    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

private:
    Session();
    ~Session();

    std::unique_ptr<SessionData> m_data;
};

} // namespace embedded

#endif
