# Makes an SPDX 2.3 document of the lines that tools/package/bill has gathered.
def rows: split("\n") | map(select(length > 0) | split("\t"));
def id: gsub("[^A-Za-z0-9.]"; "-");
def own: "SPDXRef-KRXDialogs-" + .;
def file: "SPDXRef-File-" + .[0] + "-" + (.[1] | id);
def foreign: "SPDXRef-Debian-" + (. | id);
def relation($from; $kind; $to):
  {spdxElementId: $from, relationshipType: $kind, relatedSpdxElement: $to};

($widths | rows) as $widths | ($files | rows) as $files | ($links | rows) as $links
| ($packages | rows) as $packages
| {
    spdxVersion: "SPDX-2.3",
    dataLicense: "CC0-1.0",
    SPDXID: "SPDXRef-DOCUMENT",
    name: "KRXDialogs-\($version)",
    documentNamespace: "https://spdx.org/spdxdocs/KRXDialogs-\($version)-\($seal)",
    creationInfo: {
      created: $created,
      creators: ["Organization: Korvel", "Tool: package-\($version)"]
    },
    packages: (
      ($widths | map({
        SPDXID: (.[0] | own),
        name: "KRXDialogs-\(.[0])",
        versionInfo: $version,
        supplier: "Organization: Korvel",
        downloadLocation: "NOASSERTION",
        filesAnalyzed: true,
        packageVerificationCode: {packageVerificationCodeValue: .[1]},
        licenseConcluded: "NOASSERTION",
        licenseDeclared: "NOASSERTION",
        licenseInfoFromFiles: ["NOASSERTION"],
        copyrightText: "NOASSERTION",
        primaryPackagePurpose: "LIBRARY"
      }))
      + ($packages | map({
        SPDXID: (.[0] | foreign),
        name: .[0],
        versionInfo: .[1],
        supplier: "Organization: Debian",
        downloadLocation: "https://packages.debian.org/source/\(.[3])",
        filesAnalyzed: false,
        sourceInfo: "built from the Debian source package \(.[3]) \(.[4])",
        licenseConcluded: .[5],
        licenseDeclared: .[5],
        copyrightText: "NOASSERTION",
        externalRefs: [{
          referenceCategory: "PACKAGE-MANAGER",
          referenceType: "purl",
          referenceLocator: "pkg:deb/debian/\(.[0] | @uri)@\(.[1] | @uri)?arch=\(.[2])"
        }]
      }))
    ),
    files: ($files | map({
      SPDXID: file,
      fileName: "./\(.[0])/\(.[1])",
      fileTypes: ["BINARY"],
      checksums: [
        {algorithm: "SHA1", checksumValue: .[2]},
        {algorithm: "SHA256", checksumValue: .[3]}
      ],
      licenseConcluded: "NOASSERTION",
      licenseInfoInFiles: ["NOASSERTION"],
      copyrightText: "NOASSERTION"
    })),
    relationships: (
      ($widths | map(relation("SPDXRef-DOCUMENT"; "DESCRIBES"; .[0] | own)))
      + ($files | map(relation(.[0] | own; "CONTAINS"; file)))
      + ($links | map(relation(file; "STATIC_LINK"; .[2] | foreign)))
    ),
    hasExtractedLicensingInfos: [{
      licenseId: "LicenseRef-mingw-w64-runtime",
      name: "Licences of single files of the mingw-w64 runtime",
      extractedText: $notice
    }]
  }
