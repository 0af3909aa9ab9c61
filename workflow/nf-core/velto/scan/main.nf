process VELTO_SCAN {
    tag "$meta.id"
    label 'process_medium'

    // No package of velto is published: the program is to be on the path of the nodes.

    input:
    tuple val(meta), path(reads)
    path model

    output:
    tuple val(meta), path("*.tsv.gz")    , emit: tsv
    tuple val(meta), path("*.gff3.gz")   , emit: gff3
    tuple val(meta), path("*.cds.fa.gz") , emit: cds
    tuple val(meta), path("*.faa.gz")    , emit: protein
    tuple val(meta), path("*.summary.json"), emit: summary
    tuple val(meta), path("*_mqc.json")  , emit: multiqc
    path "versions.yml"                  , emit: versions

    when:
    task.ext.when == null || task.ext.when

    script:
    def args = task.ext.args ?: ''
    def prefix = task.ext.prefix ?: "${meta.id}"
    def model_option = model ? "--model ${model}" : ''
    """
    velto scan \\
        --quiet \\
        --threads ${task.cpus} \\
        ${model_option} \\
        ${args} \\
        --output ${prefix}.tsv.gz \\
        --gff3 ${prefix}.gff3.gz \\
        --cds ${prefix}.cds.fa.gz \\
        --protein ${prefix}.faa.gz \\
        --summary ${prefix}.summary.json \\
        --multiqc ${prefix}_mqc.json \\
        ${reads}

    cat <<-END_VERSIONS > versions.yml
    "${task.process}":
        velto: \$(velto --version | sed 's/^velto //; s/,.*//')
    END_VERSIONS
    """

    stub:
    def prefix = task.ext.prefix ?: "${meta.id}"
    """
    for name in tsv gff3 cds.fa faa; do
        echo "" | gzip > ${prefix}.\$name.gz
    done
    touch ${prefix}.summary.json ${prefix}_mqc.json

    cat <<-END_VERSIONS > versions.yml
    "${task.process}":
        velto: \$(velto --version | sed 's/^velto //; s/,.*//')
    END_VERSIONS
    """
}
