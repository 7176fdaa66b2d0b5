# Complains of what SPDX 2.3 asks for and the document lacks; ends with true when there is nothing.
def known: ["GPL-3.0-or-later", "GCC-exception-3.1", "ZPL-2.1", "blessing", "MIT"];
def wanted($thing; $keys): $keys[] as $key | select($thing | has($key) | not) | "no \($key) in \($thing | tostring)";
def identifier: test("^SPDXRef-[A-Za-z0-9.-]+$");

. as $document
| ([.SPDXID] + [.packages[].SPDXID] + [.files[].SPDXID]) as $ids
| [.hasExtractedLicensingInfos[].licenseId] as $own
| [
    wanted($document; ["spdxVersion", "dataLicense", "SPDXID", "name", "documentNamespace", "creationInfo"]),
    (if .spdxVersion != "SPDX-2.3" or .dataLicense != "CC0-1.0" or .SPDXID != "SPDXRef-DOCUMENT"
     then "not the head of an SPDX 2.3 document" else empty end),
    (.documentNamespace | select(test("^https://[^#]+$") | not) | "\(.) is no namespace"),
    (.creationInfo.created | select(test("^[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}Z$") | not)
      | "\(.) is no time"),
    (.creationInfo.creators[] | select(test("^(Person|Organization|Tool): .+") | not) | "\(.) is no creator"),
    ($ids[] | select(identifier | not) | "\(.) is no identifier"),
    ($ids | group_by(.)[] | select(length > 1) | "\(.[0]) stands for several"),
    (.packages[] | wanted(.; ["SPDXID", "name", "versionInfo", "downloadLocation", "filesAnalyzed",
      "licenseConcluded", "licenseDeclared", "copyrightText"])),
    (.packages[] | select(.filesAnalyzed and (.packageVerificationCode.packageVerificationCodeValue // ""
      | test("^[0-9a-f]{40}$") | not)) | "\(.name) has no verification code"),
    (.packages[].licenseDeclared | select(. != "NOASSERTION") | gsub("[()]"; "") | split(" ")[]
      | select(. != "AND" and . != "OR" and . != "WITH") | select(IN(known[], $own[]) | not) | "\(.) is no licence"),
    (.files[] | wanted(.; ["SPDXID", "fileName", "checksums", "licenseConcluded", "copyrightText"])),
    (.files[] | select(any(.checksums[]; .algorithm == "SHA1" and (.checksumValue | test("^[0-9a-f]{40}$"))) | not)
      | "\(.fileName) has no SHA1"),
    (.relationships[] | (.spdxElementId, .relatedSpdxElement) | select(IN($ids[]) | not) | "\(.) is not there"),
    (.files[] as $file | select(any($document.relationships[];
      .relatedSpdxElement == $file.SPDXID and .relationshipType == "CONTAINS") | not)
      | "\($file.fileName) belongs to no package"),
    (.files[] as $file | select(any($document.relationships[];
      .spdxElementId == $file.SPDXID and .relationshipType == "STATIC_LINK") | not)
      | "\($file.fileName) is made of nothing"),
    (.packages[] as $part | select($part.filesAnalyzed | not) | select(any($document.relationships[];
      .relatedSpdxElement == $part.SPDXID) | not) | "\($part.name) is used by nothing"),
    (.hasExtractedLicensingInfos[] | select(.extractedText | length < 100) | "\(.licenseId) has no text")
  ]
| (.[], length == 0)
